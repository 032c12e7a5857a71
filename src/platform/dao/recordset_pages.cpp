#include "platform/dao/recordset_p.h"
#include "platform/dao/row_window.h"
#include "platform/dao/values.h"

#include <algorithm>

namespace dao {

namespace {

constexpr std::size_t pageSize = 64;
constexpr std::size_t pageLimit = 8;

class Pages final : public RecordsetPages
{
public:
    Pages(std::shared_ptr<Database> database, const TableRows& rows,
          std::shared_ptr<const RowNumbers> numbers)
        : database_(std::move(database)), rows_(rows), numbers_(std::move(numbers)),
          window_(pageSize, pageLimit)
    {
    }

    int rowCount() const override { return static_cast<int>(numbers_->size()); }

    RowKey keyAt(int row) const override
    {
        return stands(row) ? RowKey((*numbers_)[std::size_t(row)]) : RowKey();
    }

    int rowOf(const RowKey& key) const override
    {
        const auto found = std::find(numbers_->begin(), numbers_->end(), key.toLongLong());
        if (!key.isValid() || found == numbers_->end())
            return -1;
        return static_cast<int>(found - numbers_->begin());
    }

    bool isLoaded(int row) const override
    {
        return stands(row) && window_.find(std::size_t(row)) != nullptr;
    }

    void load(int row) override
    {
        Driver& driver = database_->driver();
        if (!stands(row))
            return;
        if (isLoaded(row)) {
            window_.touch(std::size_t(row));
            return;
        }
        const std::size_t start = window_.pageStart(std::size_t(row));
        const std::size_t count = std::min(window_.pageSize(), numbers_->size() - start);
        window_.keep(start, rows_.fetch(driver, std::span(*numbers_).subspan(start, count)));
    }

    QVariant value(int row, int ordinal) const override
    {
        const auto* found = stands(row) ? window_.find(std::size_t(row)) : nullptr;
        if (found == nullptr || !*found || ordinal < 0 ||
            std::size_t(ordinal) >= (*found)->values.size())
            return {};
        try {
            const auto place = std::size_t(ordinal);
            return fromStored(rows_.table().fields[place], (*found)->values[place]);
        } catch (const runtime::RunTimeError&) {
            return {}; // contents that the field does not take are shown as none
        }
    }

    void appendRow(const RowKey& key) override
    {
        RowNumbers changed = *numbers_;
        changed.push_back(key.toLongLong());
        numbers_ = std::make_shared<const RowNumbers>(std::move(changed));
    }

    void removeRow(int row) override
    {
        if (!stands(row))
            return;
        RowNumbers changed = *numbers_;
        changed.erase(changed.begin() + row);
        numbers_ = std::make_shared<const RowNumbers>(std::move(changed));
        window_.remove(std::size_t(row));
    }

    void forget(int row) override
    {
        if (stands(row))
            window_.forget(std::size_t(row));
    }

private:
    bool stands(int row) const { return row >= 0 && std::size_t(row) < numbers_->size(); }

    std::shared_ptr<Database> database_;
    TableRows rows_;
    std::shared_ptr<const RowNumbers> numbers_;
    RowWindow<std::optional<StoredRow>> window_;
};

} // namespace

std::unique_ptr<RecordsetPages> makePages(std::shared_ptr<Database> database, const TableRows& rows,
                                          std::shared_ptr<const RowNumbers> numbers)
{
    return std::make_unique<Pages>(std::move(database), rows, std::move(numbers));
}

} // namespace dao

#include "platform/dao/engine/values.h"
#include "platform/dao/recordset_p.h"
#include "platform/dao/row_window.h"

#include <algorithm>

namespace dao {

namespace {

constexpr std::size_t pageSize = 64;
constexpr std::size_t pageLimit = 8;

class Pages final : public RecordsetPages
{
public:
    Pages(std::shared_ptr<const SessionOwner> owner, const TableRows& rows,
          std::shared_ptr<RowList> list)
        : owner_(std::move(owner)), rows_(rows), list_(std::move(list)),
          window_(pageSize, pageLimit)
    {
    }

    int rowCount() const override { return static_cast<int>(list_->size()); }

    RowKey keyAt(int row) const override
    {
        return stands(row) ? RowKey(list_->at(*owner_, std::size_t(row))) : RowKey();
    }

    int rowOf(const RowKey& key) const override
    {
        const std::size_t found =
            key.isValid() ? list_->find(*owner_, key.toLongLong()) : list_->size();
        return found < list_->size() ? static_cast<int>(found) : -1;
    }

    bool isLoaded(int row) const override
    {
        return stands(row) && window_.find(std::size_t(row)) != nullptr;
    }

    void load(int row) override
    {
        owner_->session(); // This call throws if the database is closed.
        if (!stands(row))
            return;
        if (isLoaded(row)) {
            window_.touch(std::size_t(row));
            return;
        }
        const std::size_t start = window_.pageStart(std::size_t(row));
        const std::size_t count = std::min(window_.pageSize(), list_->size() - start);
        window_.keep(start, list_->rows(*owner_, rows_, start, count));
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
            return {}; // A stored value that does not fit the field is shown as empty.
        }
    }

    void appendRow(const RowKey& key) override
    {
        list_ = std::make_shared<RowList>(*list_);
        list_->append(key.toLongLong());
    }

    void removeRow(int row) override
    {
        if (!stands(row))
            return;
        list_ = std::make_shared<RowList>(*list_);
        list_->remove(std::size_t(row));
        window_.remove(std::size_t(row));
    }

    void forget(int row) override
    {
        if (stands(row))
            window_.forget(std::size_t(row));
    }

private:
    bool stands(int row) const { return row >= 0 && std::size_t(row) < list_->size(); }

    std::shared_ptr<const SessionOwner> owner_;
    TableRows rows_;
    std::shared_ptr<RowList> list_;
    RowWindow<std::optional<StoredRow>> window_;
};

} // namespace

std::unique_ptr<RecordsetPages> makePages(std::shared_ptr<const SessionOwner> owner,
                                          const TableRows& rows, std::shared_ptr<RowList> list)
{
    return std::make_unique<Pages>(std::move(owner), rows, std::move(list));
}

} // namespace dao

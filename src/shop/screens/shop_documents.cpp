#include "shop/screens/shop_documents.h"

#include "platform/runtime/message_box.h"
#include "platform/runtime/run_time_error.h"
#include "shop/bar_table.h"
#include "shop/documents.h"
#include "shop/order_source.h"
#include "shop/pack_check.h"
#include "shop/paper/papers.h"
#include "shop/screens/planning_progress.h"
#include "shop/screens/remake_dialog.h"
#include "shop/screens/settings_dialog.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace shop::screens {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

using Document = std::shared_ptr<report::PrintedDocument>;

/// The documents of one order.
class OrderPack
{
public:
    OrderPack(QString storePath, int order) : path_(std::move(storePath)), order_(order) {}

    /// Returns the pack, which is read and planned at the first call. Throws the errors of reading,
    /// and InternalError (51) if the checker finds an error in the plan.
    const ShopPack& pack(QWidget* parent)
    {
        if (!pack_) {
            const OrderSource source = readOrders(path_, {order_});
            ShopPack made{
                piecesOf(source.lines, source.settings), {}, source.orders, source.explanations};
            made.groups = planWithProgress(made.pieces.pieces, source.settings, parent);
            const QStringList findings = findingsIn(made, source.settings, {});
            if (!findings.isEmpty())
                throw RunTimeError(runtime::InternalError, findings.join(u'\n'));
            settings_ = source.settings;
            pack_ = std::move(made);
        }
        return *pack_;
    }

    QByteArray data(QByteArray (*make)(const ShopPack&)) const
    {
        return pack_ ? make(*pack_) : QByteArray();
    }

    Document remake(QWidget* parent)
    {
        const ShopPack& all = pack(parent);
        RemakeDialog dialog(all.pieces, parent);
        if (dialog.exec() != QDialog::Accepted || !dialog.choice())
            return nullptr;
        const RemakeChoice choice = *dialog.choice();
        return paper::remakeSlip(
            paper::remakePack(all, settings_, choice.order, choice.line, choice.part));
    }

    Document editSettings(QWidget* parent)
    {
        SettingsDialog dialog(readStoredBars(path_), parent);
        if (dialog.exec() == QDialog::Accepted && !dialog.changed().empty()) {
            writeBarTable(path_, dialog.changed());
            pack_.reset();
        }
        return nullptr;
    }

private:
    QString path_;
    int order_;
    std::optional<ShopPack> pack_;
    SettingsByGroup settings_;
};

/// Returns what the function makes. An error is shown in a message box, so that it does not end the
/// program.
template <typename Make>
Document shielded(const Make& make)
{
    try {
        return make();
    } catch (const RunTimeError& error) {
        runtime::MsgBox(error.description(), runtime::refusalFlags);
        return nullptr;
    }
}

void addPaper(const std::shared_ptr<OrderPack>& order, const paper::PaperKind& kind,
              report::FurtherDocuments& further)
{
    further.documents.push_back({kind.title,
                                 [order, &kind](QWidget* parent) {
                                     return shielded([&]() -> Document {
                                         return paper::paperDocument(kind, order->pack(parent));
                                     });
                                 },
                                 kind.dataFile, [order, &kind] { return order->data(kind.data); }});
}

void addLabels(const std::shared_ptr<OrderPack>& order, const QString& title,
               paper::LabelPaper labelPaper, report::FurtherDocuments& further)
{
    further.documents.push_back({title,
                                 [order, labelPaper](QWidget* parent) {
                                     return shielded([&]() -> Document {
                                         return paper::labelDocument(order->pack(parent),
                                                                     labelPaper);
                                     });
                                 },
                                 u"plan.json"_s, [order] { return order->data(planJson); }});
}

} // namespace

report::FurtherDocuments documentsOf(const QString& storePath, int orderNumber)
{
    const auto order = std::make_shared<OrderPack>(storePath, orderNumber);
    report::FurtherDocuments further{
        .reportTitle = u"דוח הזמנה"_s, .documents = {}, .commands = {}};
    const std::vector<paper::PaperKind>& kinds = paper::paperKinds();
    std::ranges::for_each(kinds.begin(), std::prev(kinds.end()),
                          [&](const paper::PaperKind& each) { addPaper(order, each, further); });
    addLabels(order, u"מדבקות"_s, paper::LabelPaper::A4, further);
    addLabels(order, u"מדבקות למדפסת 203"_s, paper::LabelPaper::Printer203, further);
    addLabels(order, u"מדבקות למדפסת 300"_s, paper::LabelPaper::Printer300, further);
    addPaper(order, kinds.back(), further);
    further.commands = {
        {u"ActionBarSettings"_s, u"הגדרות מוטות"_s, u"עריכת אורכי המוטות ושאר ההגדרות"_s,
         [order](QWidget* parent) {
             return shielded([&] { return order->editSettings(parent); });
         }},
        {u"ActionRemake"_s, u"קריאה חוזרת"_s, u"מסמך להכנה חוזרת של חלק אחד"_s,
         [order](QWidget* parent) { return shielded([&] { return order->remake(parent); }); }},
    };
    return further;
}

} // namespace shop::screens

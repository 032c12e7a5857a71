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
using report::MadeDocument;
using runtime::RunTimeError;

namespace {

constexpr qsizetype toldFindings = 8;

/// A checked shop pack and the settings with which it was planned. Each document keeps the pack
/// from which it was made, so that the exported data always belongs to the document.
struct CheckedPack
{
    ShopPack pack;
    SettingsByGroup settings;
};

using SharedPack = std::shared_ptr<const CheckedPack>;

/// Checks a shop pack. Throws InternalError (51) with the first findings if the checker has any
/// findings.
void check(const CheckedPack& made)
{
    const QStringList findings = findingsIn(made.pack, made.settings, {});
    if (findings.isEmpty())
        return;
    QString text = findings.first(std::min(toldFindings, findings.size())).join(u'\n');
    if (findings.size() > toldFindings)
        text += u"\n..."_s;
    throw RunTimeError(runtime::InternalError, text);
}

QString sentenceFor(const RunTimeError& error)
{
    switch (error.number()) {
    case runtime::NoCurrentRecord:
        return u"ההזמנה אינה קיימת עוד."_s;
    case runtime::InternalError:
        return u"התוכנית נבדקה ונמצאה בה שגיאה, ולכן אינה מוצגת."_s;
    case runtime::Locked:
        return u"עמדה אחרת מחזיקה את הנתונים נעולים. נסה שוב בעוד רגע."_s;
    case runtime::ReadOnly:
    case runtime::PermissionDenied:
        return u"אין הרשאה לקרוא את קובץ הנתונים או לכתוב בו."_s;
    default:
        return u"קריאת הנתונים או שמירתם נכשלה, ולכן הפעולה לא בוצעה."_s;
    }
}

/// Calls the function and returns its result. If the function throws a run-time error, shows a
/// message box, so that the error does not end the program, and returns an empty result.
template <typename Action>
auto shielded(const Action& action) -> decltype(action())
{
    try {
        return action();
    } catch (const RunTimeError& error) {
        runtime::MsgBox(sentenceFor(error) + u"\n\n"_s + error.description(),
                        runtime::refusalFlags);
        return {};
    }
}

/// Makes the documents of one order.
class OrderPack : public std::enable_shared_from_this<OrderPack>
{
public:
    OrderPack(QString storePath, int order) : path_(std::move(storePath)), order_(order) {}

    /// Returns the shop pack of the order. The first call reads the order and plans its bars. The
    /// next call does so again if the user stopped the planning. Throws the errors of readOrders
    /// and of check.
    SharedPack pack(QWidget* parent)
    {
        if (pack_ != nullptr)
            return pack_;
        const OrderSource source = readOrders(path_, {order_});
        auto made = std::make_shared<CheckedPack>(CheckedPack{
            {piecesOf(source.lines, source.settings), {}, source.orders, source.explanations},
            source.settings});
        const bool isComplete = plan(*made, parent);
        if (isComplete)
            pack_ = made;
        return made;
    }

    MadeDocument remake(QWidget* parent)
    {
        const SharedPack all = pack(parent);
        RemakeDialog dialog(all->pack.pieces, parent);
        if (dialog.exec() != QDialog::Accepted || !dialog.choice())
            return {};
        return remakeOf(*all, *dialog.choice(), parent);
    }

    /// Makes the remake slip for an earlier choice of a part again, after data has changed. Returns
    /// no document if the part no longer has any pieces.
    MadeDocument remakeAgain(const RemakeChoice& choice, QWidget* parent)
    {
        const SharedPack all = pack(parent);
        const std::vector<RemakeChoice> choices = remakeChoices(all->pack.pieces);
        if (std::ranges::find(choices, choice) == choices.end())
            return {};
        return remakeOf(*all, choice, parent);
    }

    /// Returns true if the user has changed settings.
    bool editSettings(QWidget* parent)
    {
        SettingsDialog dialog(readStoredBars(path_), parent);
        if (dialog.exec() != QDialog::Accepted || dialog.changed().empty())
            return false;
        writeBarTable(path_, dialog.changed());
        pack_.reset();
        return true;
    }

private:
    /// Plans and checks the bars for the pieces of a shop pack. Returns false if the user stopped
    /// the planning.
    static bool plan(CheckedPack& made, QWidget* parent)
    {
        ProgressedPlan planned = planWithProgress(made.pack.pieces.pieces, made.settings, parent);
        made.pack.groups = std::move(planned.groups);
        check(made);
        return planned.isComplete;
    }

    MadeDocument remakeOf(const CheckedPack& all, const RemakeChoice& choice, QWidget* parent)
    {
        const auto slip = std::make_shared<CheckedPack>(CheckedPack{
            paper::remakePack(all.pack, choice.order, choice.line, choice.part), all.settings});
        plan(*slip, parent);
        return {paper::remakeSlip(slip->pack), [slip] { return planJson(slip->pack); },
                [self = shared_from_this(), choice](QWidget* window) {
                    return shielded([&] { return self->remakeAgain(choice, window); });
                }};
    }

    QString path_;
    int order_;
    SharedPack pack_;
};

report::FurtherDocument paperOf(const std::shared_ptr<OrderPack>& order,
                                const paper::PaperKind& kind)
{
    return {kind.title,
            [order, &kind](QWidget* parent, int) {
                return shielded([&]() -> MadeDocument {
                    const SharedPack made = order->pack(parent);
                    return {paper::paperDocument(kind, made->pack),
                            [made, &kind] { return kind.data(made->pack); }};
                });
            },
            kind.dataFile};
}

report::FurtherDocument labelsOf(const std::shared_ptr<OrderPack>& order)
{
    return {u"מדבקות"_s,
            [order](QWidget* parent, int variant) {
                return shielded([&]() -> MadeDocument {
                    const SharedPack made = order->pack(parent);
                    return {
                        paper::labelDocument(made->pack, static_cast<paper::LabelPaper>(variant)),
                        [made] { return planJson(made->pack); }};
                });
            },
            u"plan.json"_s,
            {u"LabelPaper"_s,
             u"הנייר של המדבקות"_s,
             {u"דפי A4 (3 × 8)"_s, u"מדפסת מדבקות 203 dpi"_s, u"מדפסת מדבקות 300 dpi"_s}}};
}

report::FurtherDocument remakeOf(const std::shared_ptr<OrderPack>& order)
{
    return {
        u"קריאה חוזרת"_s,
        [order](QWidget* parent, int) { return shielded([&] { return order->remake(parent); }); },
        u"plan.json"_s};
}

} // namespace

report::FurtherDocuments documentsOf(const QString& storePath, int orderNumber)
{
    const auto order = std::make_shared<OrderPack>(storePath, orderNumber);
    report::FurtherDocuments further{
        .reportTitle = u"דוח הזמנה"_s, .documents = {}, .commands = {}};
    for (const paper::PaperKind& each : paper::paperKinds())
        further.documents.push_back(paperOf(order, each));
    // The labels are listed before the last document of paperKinds(), which shows how the sizes
    // were computed.
    further.documents.insert(std::prev(further.documents.end()), labelsOf(order));
    further.documents.push_back(remakeOf(order));
    further.commands = {{u"ActionBarSettings"_s, u"הגדרות מוטות"_s,
                         u"עריכת אורכי המוטות ושאר ההגדרות"_s, [order](QWidget* parent) {
                             return shielded([&] { return order->editSettings(parent); });
                         }}};
    return further;
}

} // namespace shop::screens

#include "platform/report/preview_documents.h"

#include "platform/report/printing.h"
#include "platform/runtime/guard.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLayout>

#include <utility>

namespace report {

using namespace Qt::StringLiterals;

PreviewDocuments::PreviewDocuments(QWidget* parent) : QToolBar(parent), list_(new QComboBox(this))
{
    setObjectName(u"ToolbarDocuments"_s);
    setWindowTitle(u"מסמכים"_s);
    setMovable(false);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    list_->setObjectName(u"Documents"_s);
    list_->setToolTip(u"המסמך המוצג"_s);
    list_->setAccessibleName(u"מסמך"_s);
    list_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    addWidget(new QLabel(u" מסמך "_s, this));
    addWidget(list_);
    exportData_ = addAction(u"שמור נתונים"_s);
    exportData_->setObjectName(u"ActionExportData"_s);
    exportData_->setToolTip(u"שמירת נתוני המסמך כקובץ"_s);
    addSeparator();
    runtime::on(list_, &QComboBox::activated, this, [this](int index) { choose(index); });
    runtime::on(exportData_, &QAction::triggered, this, [this] { exportData(); });
    hide();
}

void PreviewDocuments::setDocuments(std::shared_ptr<PrintedDocument> report,
                                    FurtherDocuments further)
{
    ++generation_;
    report_ = std::move(report);
    shown_ = {report_, {}};
    further_ = std::move(further);
    current_ = 0;
    list_->clear();
    list_->addItem(further_.reportTitle);
    for (const FurtherDocument& each : further_.documents)
        list_->addItem(each.title);
    exportData_->setEnabled(false);
    addVariants();
    addCommands();
    setVisible(!further_.documents.empty());
    emit buttonsChanged();
}

void PreviewDocuments::addVariants()
{
    for (const auto& [index, each] : std::exchange(variants_, {}))
        delete each.action; // The list belongs to it.
    for (int index = 1; index <= static_cast<int>(further_.documents.size()); ++index) {
        const DocumentVariants& variants = documentAt(index).variants;
        if (variants.titles.isEmpty())
            continue;
        auto* list = new QComboBox(this);
        list->setObjectName(variants.name);
        list->setToolTip(variants.toolTip);
        list->setAccessibleName(variants.toolTip);
        list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        list->addItems(variants.titles);
        QAction* action = insertWidget(exportData_, list);
        action->setVisible(false);
        variants_[index] = {list, action};
        runtime::on(list, &QComboBox::activated, this, [this, index] { choose(index); });
    }
}

void PreviewDocuments::addCommands()
{
    qDeleteAll(std::exchange(commands_, {}));
    for (std::size_t i = 0; i < further_.commands.size(); ++i) {
        const FurtherCommand& each = further_.commands[i];
        QAction* action = addAction(each.caption);
        action->setObjectName(each.name);
        action->setToolTip(each.toolTip);
        commands_.append(action);
        runtime::on(action, &QAction::triggered, this, [this, i] { run(i); });
    }
}

int PreviewDocuments::takeVariant(int index)
{
    list_->setCurrentIndex(current_);
    const auto found = variants_.find(index);
    if (found == variants_.end())
        return 0;
    VariantList& variants = found->second;
    const int variant = variants.list->currentIndex();
    variants.list->setCurrentIndex(variants.shown);
    return variant;
}

/// Shows the document that the user has chosen from the list. The function that creates the
/// document is copied before it is called, because it may process events that replace the list.
void PreviewDocuments::choose(int index)
{
    const int variant = takeVariant(index);
    if (index == 0) {
        presentReport();
        return;
    }
    const int generation = generation_;
    const auto make = documentAt(index).make;
    MadeDocument made = make(window(), variant);
    if (generation == generation_ && made.document != nullptr)
        present(index, variant, std::move(made));
}

void PreviewDocuments::present(int index, int variant, MadeDocument made)
{
    current_ = index;
    shown_ = std::move(made);
    list_->setCurrentIndex(index);
    exportData_->setEnabled(shown_.data != nullptr);
    for (auto& [document, each] : variants_) {
        each.action->setVisible(document == index);
        if (document == index) {
            each.shown = variant;
            each.list->setCurrentIndex(variant);
        }
    }
    layout()->activate(); // Otherwise the list would appear with the next event only.
    emit chosen(shown_.document);
}

void PreviewDocuments::presentReport()
{
    present(0, 0, {report_, {}});
}

void PreviewDocuments::run(std::size_t index)
{
    const int generation = generation_;
    const auto command = further_.commands[index].run;
    const bool hasChanged = command(window());
    if (hasChanged && generation == generation_ && current_ > 0)
        makeAgain();
}

/// Creates the displayed document again after it has become outdated. Shows the report if the
/// document cannot be created.
void PreviewDocuments::makeAgain()
{
    const int generation = generation_;
    const int index = current_;
    const int variant = takeVariant(index);
    const auto make = documentAt(index).make;
    const auto again = shown_.again;
    MadeDocument made = again ? again(window()) : make(window(), variant);
    if (generation != generation_)
        return;
    if (made.document != nullptr)
        present(index, variant, std::move(made));
    else
        presentReport();
}

void PreviewDocuments::exportData()
{
    const MadeDocument exported = shown_;
    const QString name = documentAt(current_).dataName;
    const QString path = report::exportData(*exported.document, name, exported.data(), window());
    if (!path.isEmpty())
        emit saved(path);
}

} // namespace report

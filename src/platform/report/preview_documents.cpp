#include "platform/report/preview_documents.h"

#include "platform/report/printing.h"
#include "platform/runtime/guard.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>

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
    report_ = std::move(report);
    shown_ = report_;
    further_ = std::move(further);
    current_ = 0;
    list_->clear();
    list_->addItem(further_.reportTitle);
    for (const FurtherDocument& each : further_.documents)
        list_->addItem(each.title);
    exportData_->setEnabled(false);
    addCommands();
    setVisible(!further_.documents.empty());
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

void PreviewDocuments::choose(int index)
{
    std::shared_ptr<PrintedDocument> document = report_;
    // If the document cannot be made, the list names the one that is still on display.
    list_->setCurrentIndex(current_);
    if (index > 0)
        document = further_.documents[static_cast<std::size_t>(index) - 1].make(window());
    if (document != nullptr)
        present(index, std::move(document));
}

void PreviewDocuments::present(int index, std::shared_ptr<PrintedDocument> document)
{
    current_ = index;
    shown_ = std::move(document);
    list_->setCurrentIndex(index);
    exportData_->setEnabled(index > 0);
    emit chosen(shown_);
}

void PreviewDocuments::run(std::size_t command)
{
    if (std::shared_ptr<PrintedDocument> document = further_.commands[command].run(window()))
        present(-1, std::move(document));
    else if (current_ > 0)
        choose(current_); // The command may have changed what the document shows.
}

void PreviewDocuments::exportData()
{
    const FurtherDocument& document = further_.documents[static_cast<std::size_t>(current_) - 1];
    const QString path = report::exportData(*shown_, document.dataName, document.data(), window());
    if (!path.isEmpty())
        emit saved(path);
}

} // namespace report

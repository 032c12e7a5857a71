#include "shop/screens/remake_dialog.h"

#include "platform/runtime/guard.h"
#include "shop/paper/words.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>

namespace shop::screens {

using namespace Qt::StringLiterals;

std::vector<RemakeChoice> remakeChoices(const Pieces& pieces)
{
    std::vector<RemakeChoice> choices;
    const auto add = [&](int order, int line, Part part) {
        const RemakeChoice choice{order, line, part};
        if (std::ranges::find(choices, choice) == choices.end())
            choices.push_back(choice);
    };
    for (const Piece& each : pieces.pieces)
        add(each.order, each.line, each.group.part);
    for (const Pane& each : pieces.glass)
        add(each.order, each.line, Part::Glass);
    std::ranges::stable_sort(choices, {}, [](const RemakeChoice& each) {
        return std::tuple(each.order, each.line, each.part);
    });
    return choices;
}

RemakeDialog::RemakeDialog(const Pieces& pieces, QWidget* parent)
    : QDialog(parent), choices_(remakeChoices(pieces)), list_(new QListWidget(this))
{
    setObjectName(u"Remake"_s);
    setWindowTitle(u"קריאה חוזרת"_s);
    setLayoutDirection(Qt::RightToLeft);
    resize(QSize(420, 480).boundedTo(screen()->availableSize() * 9 / 10));
    list_->setObjectName(u"Parts"_s);
    list_->setAccessibleName(u"חלקים"_s);
    for (const RemakeChoice& each : choices_)
        list_->addItem(u"הזמנה %1, שורה %2, %3"_s.arg(each.order)
                           .arg(each.line)
                           .arg(paper::partWord(each.part)));
    list_->setCurrentRow(0);
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* accept = buttons->addButton(u"הצג"_s, QDialogButtonBox::AcceptRole);
    accept->setObjectName(u"ShowRemake"_s);
    QPushButton* cancel = buttons->addButton(u"ביטול"_s, QDialogButtonBox::RejectRole);
    cancel->setObjectName(u"CancelRemake"_s);
    auto* column = new QVBoxLayout(this);
    column->addWidget(list_);
    column->addWidget(buttons);
    runtime::on(accept, &QPushButton::clicked, this, [this] { this->accept(); });
    runtime::on(list_, &QListWidget::itemDoubleClicked, this, [this] { this->accept(); });
    runtime::on(cancel, &QPushButton::clicked, this, [this] { reject(); });
}

std::optional<RemakeChoice> RemakeDialog::choice() const
{
    const int row = list_->currentRow();
    return row < 0 ? std::nullopt : std::optional(choices_[static_cast<std::size_t>(row)]);
}

} // namespace shop::screens

#include "orders/order_head.h"

#include "platform/controls/makers.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

const QString labelFamily = u"David"_s;

QLabel* caption(const QString& name, const QString& text, QWidget* parent)
{
    return controls::makeLabel(name, text, QFont(labelFamily), parent);
}

QLabel* value(const QString& name, const QString& designText, const QFont& font, QWidget* parent)
{
    QLabel* label = controls::makeValueLabel(name, designText, font, parent);
    label->setAlignment(Qt::AlignCenter);
    label->setMinimumWidth(90);
    return label;
}

QFont boldLabelFont()
{
    QFont font(labelFamily);
    font.setBold(true);
    return font;
}

QLineEdit* customerBox(const QString& name, int maxLength, QWidget* parent)
{
    auto* box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setMaxLength(maxLength);
    box->setFont(controls::fontOf(labelFamily, 13));
    box->setLayoutDirection(Qt::RightToLeft);
    box->setAlignment(Qt::AlignRight | Qt::AlignVCenter | Qt::AlignAbsolute);
    return box;
}

} // namespace

OrderHead::OrderHead(QWidget* parent)
    : QWidget(parent), LabelOrderNum(value(u"LabelOrderNum"_s, u"1"_s, boldLabelFont(), this)),
      LabelOrderDate(value(u"LabelOrderDate"_s, u"01/01/2002"_s, boldLabelFont(), this)),
      LabelLinesInOrder(value(u"LabelLinesInOrder"_s, u"0"_s, QFont(u"MS Sans Serif"_s), this)),
      TextCustomerName(customerBox(u"TextCustomerName"_s, 50, this)),
      TextCustomerAddress(customerBox(u"TextCustomerAddress"_s, 50, this)),
      TextCustomerTel(customerBox(u"TextCustomerTel"_s, 20, this))
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(4);
    rows->addLayout(orderRow());
    rows->addLayout(customerRow());
}

QBoxLayout* OrderHead::orderRow()
{
    constexpr int gap = 24;
    auto* row = new QHBoxLayout;
    row->addWidget(caption(u"Label1_7"_s, u"מס' הזמנה :"_s, this));
    row->addWidget(LabelOrderNum);
    row->addSpacing(gap);
    row->addWidget(caption(u"Label1_6"_s, u"תאריך הזמנה :"_s, this));
    row->addWidget(LabelOrderDate);
    row->addSpacing(gap);
    row->addWidget(caption(u"Label13"_s, u"שורות בהזמנה :"_s, this));
    row->addWidget(LabelLinesInOrder);
    row->addStretch();
    return row;
}

QBoxLayout* OrderHead::customerRow()
{
    auto* row = new QHBoxLayout;
    const auto addBox = [this, row](const QString& name, const QString& text, QLineEdit* box,
                                    int stretch) {
        QLabel* label = caption(name, text, this);
        label->setBuddy(box);
        row->addWidget(label);
        row->addWidget(box, stretch);
    };
    addBox(u"Label14"_s, u"עבור לקוח :"_s, TextCustomerName, 4);
    addBox(u"Label15"_s, u"כתובת :"_s, TextCustomerAddress, 4);
    addBox(u"Label16"_s, u"מס' טלפון :"_s, TextCustomerTel, 2);
    return row;
}

} // namespace orders

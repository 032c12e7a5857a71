#pragma once

#include <QWidget>

class QBoxLayout;
class QLabel;
class QLineEdit;

namespace orders {

/// The upper part of the order form. It shows the order's number, its date, the number of lines and
/// the customer's details.
class OrderHead : public QWidget
{
    Q_OBJECT

public:
    explicit OrderHead(QWidget* parent = nullptr);

    QLabel* LabelOrderNum;
    QLabel* LabelOrderDate;
    QLabel* LabelLinesInOrder;
    /// Each input box for a customer field accepts at most as many characters as the field in the
    /// store.
    QLineEdit* TextCustomerName;
    QLineEdit* TextCustomerAddress;
    QLineEdit* TextCustomerTel;

private:
    QBoxLayout* orderRow();
    QBoxLayout* customerRow();
};

} // namespace orders

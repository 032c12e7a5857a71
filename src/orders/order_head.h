#pragma once

#include <QWidget>

class QBoxLayout;
class QLabel;
class QLineEdit;

namespace orders {

/// The head of the order form: the order's number, date and count of lines, and its customer.
class OrderHead : public QWidget
{
    Q_OBJECT

public:
    explicit OrderHead(QWidget* parent = nullptr);

    QLabel* LabelOrderNum;
    QLabel* LabelOrderDate;
    QLabel* LabelLinesInOrder;
    /// The customer's boxes take as many characters as their fields.
    QLineEdit* TextCustomerName;
    QLineEdit* TextCustomerAddress;
    QLineEdit* TextCustomerTel;

private:
    QBoxLayout* orderRow();
    QBoxLayout* customerRow();
};

} // namespace orders

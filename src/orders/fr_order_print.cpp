// This file contains the print command of the order form, which saves the order's details,
// renumbers the lines and opens the report.

#include "base/module1.h"
#include "orders/fr_order.h"
#include "orders/order_head.h"
#include "output/order_report.h"
#include "output/query_rows.h"
#include "platform/controls/data_control.h"
#include "platform/dao/connection.h"
#include "platform/runtime/run_time_error.h"
#include "shop/screens/shop_documents.h"
#include "store/store_access.h"

#include <QImageReader>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

QString printedLinesQuery()
{
    return u"SELECT * FROM Cuts WHERE ORDER_NUM = "_s + QString::number(Module1::CurrentOrderNum) +
           u" ORDER BY NUM ASC"_s;
}

/// Loads the picture file and detects its format from the contents, not from the file name. Throws
/// InvalidPicture (481) if the file cannot be read as a picture.
QImage LoadPicture(const QString& path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    QImage picture = reader.read();
    if (picture.isNull())
        throw runtime::RunTimeError(runtime::InvalidPicture);
    return picture;
}

} // namespace

void FrOrder::CmdPrint_Click()
{
    SaveOrderDetails(false);
    if (DataAllCuts->Recordset().RecordCount() <= 0)
        return;
    renumberLines();
    openReport();
}

/// Assigns the numbers 1, 2, ... to as many lines of the order as RecordCount reports. For a newly
/// opened dynaset, RecordCount reports only the rows reached so far. Later lines may therefore keep
/// their numbers.
void FrOrder::renumberLines()
{
    Module1::SqlText = printedLinesQuery();
    DataCut->setRecordset(
        store::OpenMyDataBase()->OpenRecordset(Module1::SqlText, dao::dbOpenDynaset));
    dao::Recordset& lines = DataCut->Recordset();
    const int count = lines.RecordCount();
    for (int i = 1; i <= count; ++i) {
        lines.Edit();
        lines.Fields(u"NUM"_s).SetValue(i);
        lines.Update();
        lines.MoveNext();
    }
}

void FrOrder::openReport()
{
    ado::Connection connection;
    store::OpenAdoConnection(connection, Module1::StorePath);
    Module1::SqlText = printedLinesQuery();
    report::DataReport& DataReport1 = output::dataReport1();
    DataReport1.setDataSource(output::rowsOf(connection.Execute(Module1::SqlText)));
    report::Section& pageHead = DataReport1.Sections(2);
    if (Module1::FileSys->FileExists(Module1::LogoPath))
        pageHead.Controls(u"ImageCompanyLogo"_s).setPicture(LoadPicture(Module1::LogoPath));
    pageHead.Controls(u"LabelDate"_s).setCaption(head().LabelOrderDate->text());
    pageHead.Controls(u"LabelOrder_Num"_s).setCaption(QString::number(Module1::CurrentOrderNum));
    pageHead.Controls(u"LabelClientName"_s).setCaption(head().TextCustomerName->text());
    pageHead.Controls(u"LabelAddress"_s).setCaption(head().TextCustomerAddress->text());
    pageHead.Controls(u"LabelTel"_s).setCaption(head().TextCustomerTel->text());
    DataReport1.setFurtherDocuments(
        shop::screens::documentsOf(Module1::StorePath, Module1::CurrentOrderNum));
    DataReport1.Show();
}

} // namespace orders

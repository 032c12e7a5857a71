#include "shop/paper/qr_code.h"

#include "platform/runtime/run_time_error.h"

#include <zint.h>

#include <memory>

namespace shop::paper {

namespace {

/// Error correction level M of QR codes: about 15 % of the code may be unreadable.
constexpr int levelM = 2;

struct DeleteSymbol
{
    void operator()(zint_symbol* symbol) const { ZBarcode_Delete(symbol); }
};

bool isDark(const zint_symbol& symbol, int row, int column)
{
    return ((symbol.encoded_data[row][column / 8] >> (column % 8)) & 1) != 0;
}

} // namespace

QImage qrCode(const QString& text)
{
    const std::unique_ptr<zint_symbol, DeleteSymbol> symbol(ZBarcode_Create());
    const QByteArray data = text.toUtf8();
    if (symbol != nullptr) {
        symbol->symbology = BARCODE_QRCODE;
        symbol->input_mode = UNICODE_MODE;
        symbol->option_1 = levelM;
    }
    if (symbol == nullptr ||
        ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char*>(data.constData()),
                        static_cast<int>(data.size())) >= ZINT_ERROR)
        throw runtime::RunTimeError(runtime::InternalError);
    QImage picture(symbol->width, symbol->rows, QImage::Format_Mono);
    picture.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    for (int row = 0; row < symbol->rows; ++row) {
        for (int column = 0; column < symbol->width; ++column)
            picture.setPixel(column, row, isDark(*symbol, row, column) ? 1 : 0);
    }
    return picture;
}

} // namespace shop::paper

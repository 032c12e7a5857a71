#pragma once

#include <QImage>
#include <QString>

namespace shop::paper {

/// Returns the QR code of a text as a picture with one pixel per module and without a margin.
/// Throws InternalError (51) if the text cannot be encoded.
QImage qrCode(const QString& text);

} // namespace shop::paper

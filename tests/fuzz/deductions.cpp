// Fuzzes the conversion of deductions between number, input boxes and stored text.

#include "fuzz/fuzz.h"

#include "catalogue/deductions.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/run_time_error.h"

#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;
using catalogue::DeductionText;

namespace {

/// The smallest magnitude whose whole part exceeds 16 bits after rounding.
constexpr double limit = 32767.995;

std::optional<DeductionText> split(double value)
{
    try {
        return catalogue::splitDeduction(value);
    } catch (const runtime::RunTimeError& error) {
        fuzz::require(error.number() == runtime::Overflow, "only values out of range are refused",
                      QString::number(value, 'g', 17));
        return std::nullopt;
    }
}

std::optional<double> number(const QString& text)
{
    try {
        return runtime::toDouble(text);
    } catch (const runtime::RunTimeError&) {
        return std::nullopt;
    }
}

bool areDigits(const QString& text)
{
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

void checkBoxes(double value, const DeductionText& boxes)
{
    const QString input = QString::number(value, 'g', 17);
    fuzz::require(boxes.sign == (value > 0 ? u"+"_s : u"-"_s),
                  "the sign box shows the number's sign", input);
    fuzz::require(areDigits(boxes.whole) && (boxes.whole.size() == 1 || boxes.whole[0] != u'0'),
                  "the whole part is digits", input);
    fuzz::require(areDigits(boxes.hundredths) && boxes.hundredths.size() == 2,
                  "the hundredths are two digits", input);
}

/// Checks the way from a stored number to the boxes and back.
void checkNumber(double value)
{
    const QString input = QString::number(value, 'g', 17);
    const std::optional<DeductionText> boxes = split(value);
    if (std::isnan(value) || std::abs(std::abs(value) - limit) > 1e-6)
        fuzz::require(boxes.has_value() == (std::abs(value) < limit),
                      "a number is split exactly if it is in range", input);
    if (!boxes)
        return;
    checkBoxes(value, *boxes);
    const std::optional<double> joined = number(catalogue::joinDeduction(*boxes));
    fuzz::require(joined.has_value(), "the texts of the boxes yield a number", input);
    fuzz::require(std::abs(*joined - value) <= 0.005 + 1e-9,
                  "the number is rounded to the nearest hundredth", input);
    // The sign of a value that was rounded to 0 is lost.
    if (*joined != 0)
        fuzz::require(split(*joined) == boxes, "a rounded number is stable", input);
}

/// Checks the way from the boxes to a stored number and back.
void checkTexts(const DeductionText& boxes)
{
    const QString joined = catalogue::joinDeduction(boxes);
    const std::optional<double> value = number(joined);
    const bool isSign = boxes.sign == u"+" || boxes.sign == u"-";
    if (!isSign || !areDigits(boxes.whole) || !areDigits(boxes.hundredths))
        return;
    const double whole = boxes.whole.toDouble();
    if (boxes.whole.size() > 5 || boxes.hundredths.size() != 2 || whole > 32767)
        return;
    fuzz::require(value.has_value(), "boxes with digits yield a number", joined);
    const double magnitude = whole + boxes.hundredths.toDouble() / 100;
    fuzz::require(std::abs(*value - (boxes.sign == u"-" ? -magnitude : magnitude)) < 1e-9,
                  "the number equals the boxes' value", joined);
    const std::optional<DeductionText> again = split(*value);
    fuzz::require(again.has_value(), "the number of the boxes can be split", joined);
    fuzz::require(again->hundredths == boxes.hundredths && again->whole.toDouble() == whole &&
                      (magnitude == 0 || again->sign == boxes.sign),
                  "the boxes survive a round trip", joined);
}

} // namespace

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    return 0;
}

/// The input holds numbers as raw bytes, numbers near whole hundredths, or the texts of the three
/// boxes.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    switch (input.takeBelow(3)) {
    case 0:
        while (!input.atEnd())
            checkNumber(input.take<double>());
        break;
    case 1:
        while (!input.atEnd()) {
            const double hundredths = input.take<std::int32_t>();
            checkNumber(hundredths / 100);
            checkNumber(std::nextafter(hundredths / 100, 0));
            checkNumber(hundredths / 1000);
        }
        break;
    default: {
        const QString sign = input.takeText(1);
        const QString whole = input.takeText(input.takeBelow(8));
        checkTexts({sign, whole, input.takeRest()});
    }
    }
    return 0;
}

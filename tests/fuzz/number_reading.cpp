// Fuzzes the conversions between text and number in several locales.

#include "fuzz/fuzz.h"

#include "platform/runtime/conversions.h"
#include "platform/runtime/run_time_error.h"

#include <QHash>
#include <QLocale>
#include <QRegularExpression>

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// The locales differ in decimal sign, digits, and direction marks at the sign.
const std::array locales{QLocale::c(), QLocale(QLocale::Hebrew, QLocale::Israel),
                         QLocale(QLocale::German, QLocale::Germany),
                         QLocale(QLocale::Arabic, QLocale::Egypt)};

/// The result of a call: a value, or the number of the error that it throws.
template <typename Value>
struct Outcome
{
    std::optional<Value> value;
    int error = 0;
};

template <typename Call>
auto outcomeOf(Call call) -> Outcome<decltype(call())>
{
    try {
        return {call(), 0};
    } catch (const runtime::RunTimeError& error) {
        return {std::nullopt, error.number()};
    }
}

/// Returns the compiled pattern with the locale's decimal sign in place of %1. Patterns are cached.
QRegularExpression patternFor(const QString& pattern)
{
    static QHash<QString, QRegularExpression> made;
    const QString decimal = QRegularExpression::escape(QLocale().decimalPoint());
    const QString spelled = pattern.arg(decimal);
    if (!made.contains(spelled))
        made.insert(spelled, QRegularExpression(spelled));
    return made.value(spelled);
}

/// An independent implementation of the conversion: a regular expression decides what is a number,
/// and the C library computes its value.
Outcome<double> expectedDouble(const QString& text)
{
    const QRegularExpressionMatch match =
        patternFor(uR"(\A[ \t]*([+-]?)(?=[%1.]?[0-9])([0-9]*)(?:[%1.]([0-9]*))?)"
                   uR"((?:[eE]([+-]?[0-9]+))?[ \t]*\z)"_s)
            .match(text);
    if (!match.hasMatch())
        return {std::nullopt, runtime::TypeMismatch};
    const QString exponent = match.captured(4).isEmpty() ? u"0"_s : match.captured(4);
    const QString number =
        match.captured(1) + match.captured(2) + u'.' + match.captured(3) + u'e' + exponent;
    const double value = std::strtod(number.toLatin1().constData(), nullptr);
    if (std::isinf(value))
        return {std::nullopt, runtime::Overflow};
    return {value, 0};
}

/// An independent implementation of rounding half to even, based on the two adjacent integers.
double roundedHalfToEven(double value)
{
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest != 0.5)
        return rest < 0.5 ? below : below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <typename Integer>
void checkNarrowing(double value, const Outcome<Integer>& outcome)
{
    const QString input = QString::number(value, 'g', 17);
    const double rounded = roundedHalfToEven(value);
    const bool fits = rounded >= std::numeric_limits<Integer>::min() &&
                      rounded <= std::numeric_limits<Integer>::max();
    fuzz::require(outcome.value.has_value() == fits, "narrowing accepts values in range", input);
    if (fits)
        fuzz::require(double(*outcome.value) == rounded, "narrowing rounds half to even", input);
    else
        fuzz::require(outcome.error == runtime::Overflow, "narrowing overflows", input);
}

void checkReading(const QString& text)
{
    const Outcome<double> expected = expectedDouble(text);
    const Outcome<double> read = outcomeOf([&] { return runtime::toDouble(text); });
    fuzz::require(read.value == expected.value, "reading returns the expected number", text);
    fuzz::require(read.error == expected.error, "reading throws the expected error", text);
    fuzz::require(outcomeOf([&] { return runtime::toDouble(QVariant(text)); }).value == read.value,
                  "a field and a box read a text alike", text);
    fuzz::require(runtime::toText(QVariant(text)) == text, "a text stays as it is", text);
}

/// Returns true if the text has at most 15 digits without trailing zeros, no group separators, and
/// the sign in front.
bool isWellFormed(const QString& text)
{
    const QRegularExpressionMatch match =
        patternFor(uR"(\A-?([0-9]{1,15})(?:%1([0-9]*[1-9]))?(?:E[+-][0-9]{2,3})?\z)"_s).match(text);
    if (!match.hasMatch())
        return false;
    QString digits = match.captured(1) + match.captured(2);
    while (digits.startsWith(u'0'))
        digits.remove(0, 1);
    return digits.size() <= 15;
}

void checkWriting(double value)
{
    const QString text = runtime::toText(value);
    if (!std::isfinite(value))
        return;
    fuzz::require(isWellFormed(text), "a number's text is well-formed", text);
    const Outcome<double> read = outcomeOf([&] { return runtime::toDouble(text); });
    // Rounding the largest doubles to 15 digits may exceed the range of a double, and the smallest
    // doubles have fewer digits.
    if (std::abs(value) > 1.79769313486231e308) {
        fuzz::require(read.value.has_value() || read.error == runtime::Overflow,
                      "the largest numbers are kept or overflow", text);
        return;
    }
    fuzz::require(read.value.has_value(), "a number's text can be parsed", text);
    if (std::abs(value) < std::numeric_limits<double>::min())
        return;
    fuzz::require(std::abs(*read.value - value) <= std::abs(value) * 5.1e-15,
                  "15 digits survive a round trip", text);
    fuzz::require(runtime::toText(*read.value) == text,
                  "a parsed number is formatted to the same text", text);
}

void checkNumber(double value)
{
    checkWriting(value);
    checkNarrowing<std::int16_t>(value, outcomeOf([&] { return runtime::toInt16(value); }));
    checkNarrowing<std::int32_t>(value, outcomeOf([&] { return runtime::toInt32(value); }));
}

} // namespace

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    return 0;
}

/// The first bytes of the input choose the locale and the format of the rest: UTF-8, UTF-16 or raw
/// doubles.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    QLocale::setDefault(locales[static_cast<std::size_t>(input.takeBelow(int(locales.size())))]);
    switch (input.takeBelow(3)) {
    case 0:
        checkReading(input.takeRest());
        break;
    case 1:
        checkReading(input.takeRestAsUtf16());
        break;
    default:
        while (!input.atEnd())
            checkNumber(input.take<double>());
    }
    return 0;
}

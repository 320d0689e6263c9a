#include "host/widgets/SpinBox.h"

#include <QWheelEvent>

#include <optional>

namespace {

constexpr int kDecimal = 10;

/// Returns the typed number, which may exceed the range of an int.
std::optional<qlonglong> typedNumber(const QSpinBox& box, const QString& input)
{
    if (box.displayIntegerBase() != kDecimal)
        return std::nullopt;
    QString digits = input;
    if (!box.prefix().isEmpty() && digits.startsWith(box.prefix()))
        digits.remove(0, box.prefix().size());
    if (!box.suffix().isEmpty() && digits.endsWith(box.suffix()))
        digits.chop(box.suffix().size());
    bool isNumber = false;
    const qlonglong number = box.locale().toLongLong(digits.trimmed(), &isNumber);
    return isNumber ? std::make_optional(number) : std::nullopt;
}

} // namespace

CSpinBox::CSpinBox(QWidget* parent)
    : QSpinBox(parent)
{
    setFocusPolicy(Qt::StrongFocus); // excludes the wheel
}

void CSpinBox::fixup(QString& input) const
{
    const std::optional<qlonglong> number = typedNumber(*this, input);
    if (!number) {
        QSpinBox::fixup(input);
        return;
    }
    const auto low = static_cast<qlonglong>(minimum());
    const auto high = static_cast<qlonglong>(maximum());
    const auto nearest = static_cast<int>(qBound(low, *number, high));
    input = prefix() + textFromValue(nearest) + suffix();
}

QValidator::State CSpinBox::validate(QString& input, int& position) const
{
    const QValidator::State state = QSpinBox::validate(input, position);
    if (state == QValidator::Invalid && typedNumber(*this, input))
        return QValidator::Intermediate;
    return state;
}

void CSpinBox::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QSpinBox::wheelEvent(event);
    else
        event->ignore();
}

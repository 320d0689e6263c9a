// Feeds the field for an address with keys, pastes, input method texts and setText() made of bytes,
// and aborts when what it holds is no address.

#include "host/widgets/IPLineEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QRegularExpression>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>

namespace {

constexpr Qt::Key kKeys[] = {Qt::Key_Left, Qt::Key_Right,  Qt::Key_Home,      Qt::Key_End,
                             Qt::Key_A,    Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_X,
                             Qt::Key_C,    Qt::Key_V,      Qt::Key_Z,         Qt::Key_Return};
constexpr Qt::KeyboardModifiers kModifiers[] = {Qt::NoModifier, Qt::ShiftModifier,
                                                Qt::ControlModifier,
                                                Qt::ShiftModifier | Qt::ControlModifier};

QApplication& application()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "fuzz_iplineedit";
    static char* arguments[] = {name, nullptr};
    static QApplication app(count, arguments);
    return app;
}

class Input final
{
public:
    Input(const std::uint8_t* data, std::size_t size)
        : m_data(data)
        , m_size(size)
    {
    }

    bool atEnd() const { return m_size == 0; }

    unsigned byte()
    {
        if (m_size == 0)
            return 0;
        --m_size;
        return *m_data++;
    }

    QString text()
    {
        QByteArray bytes;
        for (unsigned length = byte() % 20; length > 0 && !atEnd(); --length)
            bytes.append(static_cast<char>(byte()));
        return QString::fromUtf8(bytes);
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
};

void press(CIPLineEdit& field, int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&field, &event);
}

/// Printable bytes are typed; the others choose what else is done.
void operate(CIPLineEdit& field, Input& input)
{
    const unsigned code = input.byte();
    if (code >= 0x20 && code < 0x7F) {
        press(field, static_cast<int>(code), Qt::NoModifier, QChar(code));
    } else if (code == 0x01) {
        field.setText(input.text());
    } else if (code == 0x02) {
        QApplication::clipboard()->setText(input.text());
        press(field, Qt::Key_V, Qt::ControlModifier, QString());
    } else if (code == 0x03) {
        QInputMethodEvent event;
        event.setCommitString(input.text());
        QApplication::sendEvent(&field, &event);
    } else if (code == 0x04) {
        const auto anchor = static_cast<std::int8_t>(input.byte());
        field.setSelection(anchor, static_cast<std::int8_t>(input.byte()));
    } else if (code == 0x05) {
        QFocusEvent event(QEvent::FocusOut, Qt::OtherFocusReason);
        QApplication::sendEvent(&field, &event);
    } else {
        const unsigned key = input.byte();
        press(field, kKeys[code % std::size(kKeys)], kModifiers[key % std::size(kModifiers)],
              QString());
    }
}

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void check(const CIPLineEdit& field)
{
    static const QRegularExpression canonical(
        QStringLiteral("\\A((25[0-5]|2[0-4][0-9]|1[0-9][0-9]|[1-9]?[0-9])(\\.(?!\\z)|\\z)){4}\\z"));
    const QString text = field.text();
    require(text.isEmpty() || canonical.match(text).hasMatch());

    const QString shown = field.displayText();
    require(shown.count(QLatin1Char('.')) == 3);
    bool complete = true;
    for (const QString& octet : shown.split(QLatin1Char('.'))) {
        require(octet.size() <= 3 && octet.toInt() <= 255);
        for (const QChar digit : octet)
            require(digit >= QLatin1Char('0') && digit <= QLatin1Char('9'));
        complete = complete && !octet.isEmpty();
    }
    require(complete == !text.isEmpty());
    require(field.cursorPosition() >= 0 && field.cursorPosition() <= shown.size());
    require(field.selectionAnchor() >= 0 && field.selectionAnchor() <= shown.size());
    require(field.rect().contains(field.cursorRect(field.cursorPosition())));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    application();
    CIPLineEdit field;
    field.resize(172, 24);
    QString told;
    int changes = 0;
    QObject::connect(&field, &CIPLineEdit::textChanged, &field, [&](const QString& text) {
        told = text;
        ++changes;
    });
    Input input(data, size);
    while (!input.atEnd()) {
        const QString before = field.text();
        changes = 0;
        operate(field, input);
        check(field);
        require(changes == (field.text() == before ? 0 : 1));
        require(told == field.text());
    }
    return 0;
}

#include "tests/support/MessageTrap.h"

#include <QLoggingCategory>

#include <atomic>
#include <mutex>
#include <utility>

namespace {

std::mutex g_mutex;
QStringList g_messages;
std::atomic<QtMessageHandler> g_previous{nullptr};

void collect(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    const QString category = QString::fromLatin1(context.category);
    if (category.isEmpty() || category == QLatin1String("default")
        || category.startsWith(QLatin1String("qt."))) {
        if (const QtMessageHandler previous = g_previous)
            previous(type, context, message);
        return;
    }
    const std::lock_guard guard(g_mutex);
    g_messages.append(category + QLatin1String(": ") + message);
}

} // namespace

MessageTrap::MessageTrap()
    : m_previous(qInstallMessageHandler(collect))
{
    g_previous = m_previous;
    take();
    // Categories of the product's may be quiet by default.
    QLoggingCategory::setFilterRules(
        QStringLiteral("*.debug=true\n*.info=true\nqt.*.debug=false\nqt.*.info=false"));
}

MessageTrap::~MessageTrap()
{
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(m_previous);
}

QStringList MessageTrap::take()
{
    const std::lock_guard guard(g_mutex);
    return std::exchange(g_messages, QStringList());
}

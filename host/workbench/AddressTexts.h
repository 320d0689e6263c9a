#pragma once

#include <QList>
#include <QString>

#include <optional>

/// "192.168.0.1, 192.168.0.2"
QString addressesText(const QList<quint32>& addresses);

/// The addresses of such a text; nothing when something in it is none.
std::optional<QList<quint32>> addressesOfText(const QString& text);

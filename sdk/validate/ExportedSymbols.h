#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Returns the names that a shared library exports, or none and the reason in `problem`.
std::optional<QStringList> exportedSymbols(const QString& library, QString& problem);

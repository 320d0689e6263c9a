#pragma once

#include "host/workbench/project/Project.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Reads and writes project files: JSON in UTF-8 with a version number. A missing field has its
/// default; an unknown field is an error.

constexpr int kProjectFileVersion = 1;

/// The largest project that can be made in the workbench fits, in JSON with six bytes for each
/// character: what is on the screen can be saved, and recovered after a crash.
constexpr qint64 kMaxProjectFileSize = 64LL * 1024 * 1024;

/// Reads a project. On failure returns nothing and sets `problem` to a message that begins with
/// line and column if they are known.
std::optional<Project> parseProject(const QByteArray& json, QString& problem);

/// Reads a project from a file. The message in `problem` begins with the name of the file.
std::optional<Project> loadProject(const QString& path, QString& problem);

QByteArray projectToJson(const Project& project);

/// Replaces the file atomically. On failure the old file is unchanged; returns false and sets
/// `problem`.
bool saveProject(const Project& project, const QString& path, QString& problem);

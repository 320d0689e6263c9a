#pragma once

#include "host/workbench/project/Project.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Project files: JSON in UTF-8 with a version number. Written by this program or by hand; a field
/// that is missing has its default, one that is not known is refused.

constexpr int kProjectFileVersion = 1;
constexpr qint64 kMaxProjectFileSize = 16LL * 1024 * 1024;

/// Reads a project. Without one in the answer, `problem` says what is wrong, starting with the line
/// and column where that is known.
std::optional<Project> parseProject(const QByteArray& json, QString& problem);

/// The same from a file; `problem` then starts with the file's name.
std::optional<Project> loadProject(const QString& path, QString& problem);

QByteArray projectToJson(const Project& project);

/// Replaces the file in one go: whatever goes wrong, the old file stays as it was, `problem` says
/// what happened, and the answer is false.
bool saveProject(const Project& project, const QString& path, QString& problem);

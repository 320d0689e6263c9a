#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The exit code for a command line or a file that is wrong.
constexpr int kWrongUse = 2;

/// What the command line asks for.
struct Options
{
    QString library;
    QString hostPlugin; ///< Empty for none.
    int level = 5;
    quint32 seed = 1;
    QStringList only; ///< Patterns of names with * and ?; empty for all tests.
    int silenceMs = 60000;
    QString junitFile;
    QString jsonFile;
    bool list = false;
    QString child; ///< The test to run in this process.
};

/// Reads the command line. Prints help, and what is wrong, by itself: then there is no value, and
/// `exitCode` is what the program ends with.
std::optional<Options> readOptions(const QStringList& arguments, int& exitCode);

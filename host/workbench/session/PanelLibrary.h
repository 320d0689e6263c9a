#pragma once

#include "Interface/TargetSelectArea.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QString>

class ITargetSelectAreaInterface;
class QWidget;

/// Loads the shared library of the panel from disk and resolves its one exported function by the
/// mangled name. The library is never unloaded.
class PanelLibrary final
{
    Q_DECLARE_TR_FUNCTIONS(PanelLibrary)

public:
    /// Returns the path of the library where builds and installations put it: in ../lib, on Windows
    /// beside the program.
    static QString defaultPath();

    /// Loads the library. Returns false on failure, with file and reason in `problem`.
    bool load(const QString& path, QString& problem);

    bool isLoaded() const { return m_init != nullptr; }
    QString path() const { return m_library.fileName(); }

    /// Calls the exported function, which creates the panel as a child of `parent`. Returns null on
    /// failure.
    ITargetSelectAreaInterface* init(QWidget* parent) const;

private:
    QLibrary m_library;
    TargetSelectAreaInit m_init = nullptr;
};

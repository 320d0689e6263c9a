#pragma once

#include "Interface/TargetSelectArea.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QString>

class ITargetSelectAreaInterface;
class QWidget;

/// The panel's shared library, loaded from disk as a host does: by path, with its one entry
/// resolved by its linker name. Never unloaded.
class PanelLibrary final
{
    Q_DECLARE_TR_FUNCTIONS(PanelLibrary)

public:
    /// The library beside this program: in ../lib, where a build and an installation have it.
    static QString defaultPath();

    /// Loads the library. On failure `problem` says which file and why.
    bool load(const QString& path, QString& problem);

    bool isLoaded() const { return m_init != nullptr; }
    QString path() const { return m_library.fileName(); }

    /// Calls the entry: the panel as a child of `parent`. Null when it has none to give.
    ITargetSelectAreaInterface* init(QWidget* parent) const;

private:
    QLibrary m_library;
    TargetSelectAreaInit m_init = nullptr;
};

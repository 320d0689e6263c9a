#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class CProcessorTreeModel;
class QTreeView;

/// Says in a tree without processors that there are none, in the middle of the room below the rows,
/// and in the view's accessible description. Says nothing before the host has filled the tree. GUI
/// thread.
class CEmptyTreeHint final : public QObject
{
    Q_OBJECT

public:
    /// For `view`, which becomes the parent.
    explicit CEmptyTreeHint(QTreeView* view);

    /// Looks at `model` from now on; null for none.
    void setModel(CProcessorTreeModel* model);

    /// Brings the text up to date with the tree and the language.
    void update();

    /// Paints the hint, if it is due, into the view's viewport. Call it after the rows are painted.
    void paint();

private:
    bool isDue() const;
    QRect room() const;

    QTreeView* m_view; // the parent
    QPointer<CProcessorTreeModel> m_model;
    QString m_text; // empty while the hint is not due
};

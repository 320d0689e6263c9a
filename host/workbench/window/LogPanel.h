#pragma once

#include <QModelIndexList>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <utility>

class CActionLineEdit;
class LogFilter;
class QAction;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class TraceModel;

/// Shows the live log (calls, events and log records) with a filter.
class LogPanel final : public QWidget
{
    Q_OBJECT

public:
    /// `trace` must outlive the panel.
    explicit LogPanel(TraceModel& trace, QWidget* parent = nullptr);

    /// Sets what returns why nothing may be exported to a file, empty if it may.
    void setExportRefusal(std::function<QString(const QString& path)> refusal)
    {
        m_refusal = std::move(refusal);
    }

    /// Sets the filter to these words and to all kinds.
    void showWords(const QString& words);

    QLineEdit* filterField() const;
    QComboBox* kindSelector() const { return m_kindSelector; }
    QCheckBox* paintingBox() const { return m_painting; }
    QTableView* view() const { return m_view; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();
    void follow();
    void showCount();
    QStringList lines(const QModelIndexList& rows) const;
    void copyLines();
    void exportLines();

    TraceModel& m_trace;
    std::function<QString(const QString&)> m_refusal;
    LogFilter* m_filter;            // Qt child
    CActionLineEdit* m_filterField; // Qt child
    QComboBox* m_kindSelector;      // Qt child
    QCheckBox* m_follow;            // Qt child
    QCheckBox* m_painting;          // Qt child
    QLabel* m_count;                // Qt child
    QPushButton* m_exportButton;    // Qt child
    QPushButton* m_clearButton;     // Qt child
    QTableView* m_view;             // Qt child
    QAction* m_copy;                // Qt child
};

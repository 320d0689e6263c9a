#pragma once

#include <QLabel>
#include <QVector>

class TraceModel;
struct TraceEntry;

/// Counts the findings of the panel's checks since the log was cleared. Hidden while there are
/// none.
class FindingsLabel final : public QLabel
{
    Q_OBJECT

public:
    /// `trace` must outlive the label.
    explicit FindingsLabel(TraceModel& trace, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void count(const QVector<TraceEntry>& entries);
    void retranslate();

    int m_breaches = 0;
    int m_hints = 0;
};

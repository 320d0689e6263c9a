#pragma once

#include "sdk/record/TraceEntry.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>

#include <cstddef>
#include <vector>

/// A recording, arranged for its replay.
class Recording final
{
public:
    /// `isCutOff` if the host ended before the recording did.
    explicit Recording(const std::vector<CTraceEntry>& entries, bool isCutOff = false);

    /// Returns whether the host ended inside a call or an event, before its line was written, or
    /// before its panel.
    bool isCutOff() const { return m_isCutOff; }

    /// What comes from outside of the panel, in its order: events, layer calls and input.
    const std::vector<CTraceEntry>& drivers() const { return m_drivers; }

    /// What the panel asked the host to do, in its order.
    const std::vector<CTraceEntry>& requests() const { return m_requests; }

    /// A question inside which the host told an event or called the panel.
    struct Question
    {
        QByteArray key;       ///< See keyOf().
        std::size_t at = 0;   ///< Of the answers with this key.
        int before = 0;       ///< How often the same was asked before, since the last other step.
        bool inEvent = false; ///< It was asked inside an event, which is its cause.
    };

    /// Returns the question inside which the host did this, null for none. The panel may ask more
    /// or less often.
    const Question* questionOf(const CTraceEntry& driver) const;

    bool isInQuestion(const CTraceEntry& driver) const { return questionOf(driver) != nullptr; }

    /// Returns whether the thread that told this event had told another one shortly before, and the
    /// GUI thread was busy elsewhere: it asked nothing in between, so it took both up later.
    bool isRightAfterAnother(const CTraceEntry& driver) const;

    /// Returns how many questions the panel's work thread had asked when `driver` began.
    std::size_t workQuestionsBefore(const CTraceEntry& driver) const;

    /// What the panel knew of an event at some moment: how many questions it had asked inside the
    /// event, on the thread that tells it, and how long ago it got the last answer.
    struct Known
    {
        std::size_t questions = 0;
        qint64 time = 0; ///< In nanoseconds.
    };

    /// Returns what the panel knew of `event` when `driver` began.
    Known knownOf(qint64 event, const CTraceEntry& driver) const;

    /// Returns whether the tree may have lagged behind the events when the host asked for it: one
    /// had come shortly before.
    bool isTreeInMotion(const CTraceEntry& driver) const;

    std::size_t questionCount() const { return m_questionCount; }

    /// Returns the answer to a question after `position`, the last entry that has been repeated;
    /// null if there is none. It is the first one before the next request, gesture or call of the
    /// host, because a host changes its project before it tells; else the last one up to
    /// `position`, else any. Inside `event`, 0 for none, gestures do not count.
    const CTraceEntry* answer(const QByteArray& key, qint64 position, qint64 event) const;

    const CTraceEntry* answer(const Question& question) const;

    /// Returns what two questions have in common that are the same.
    static QByteArray keyOf(const QString& name, const QJsonObject& arguments);

private:
    void findEventsInARow(const std::vector<CTraceEntry>& entries);
    void addQuestion(const CTraceEntry& question, bool isCause);
    void addSelection(const CTraceEntry& request);
    bool isEvent(qint64 sequence) const;

    std::vector<CTraceEntry> m_drivers;
    std::vector<CTraceEntry> m_requests;
    std::size_t m_questionCount = 0;
    bool m_isCutOff;
    std::vector<qint64> m_moments; // requests, gestures and calls of the host that change something
    std::vector<qint64> m_changes; // the same without the gestures
    std::vector<qint64> m_workQuestions;
    QSet<qint64> m_inMotion;
    QSet<qint64> m_rightAfter;                        // events, behind the one before
    QHash<qint64, std::vector<CTraceEntry>> m_inside; // questions on the threads of events
    QHash<qint64, Question> m_questions;              // those inside which something else happened
    QHash<QByteArray, std::vector<CTraceEntry>> m_answers; // in the order of the questions
};

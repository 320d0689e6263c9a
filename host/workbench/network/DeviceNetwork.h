#pragma once

#include "host/simulator/protocol/Message.h"
#include "host/workbench/network/DeviceLink.h"
#include "host/workbench/project/NetworkSettings.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QUuid>

#include <functional>

class ProjectStore;
struct DeviceReport;
struct ProbePlan;

/// How a detection has ended.
enum class DetectionEnd { Finished, Cancelled, Refused, Failed };

/// The simulated processors of the project: detects them, and keeps the project and them alike from
/// then on. What a processor reports goes into the project; names and lit front panels that change
/// in the project go to the processor. GUI thread.
class DeviceNetwork final : public QObject
{
    Q_OBJECT

public:
    /// Shows how far a detection is; `done` is less than `total`.
    using Progress = std::function<void(int done, int total)>;

    /// `store` must outlive this object.
    explicit DeviceNetwork(ProjectStore& store, QObject* parent = nullptr);

    /// Returns when the detection is over. Handles events meanwhile; an InputGate is the caller's.
    /// Ends early, as Cancelled, when the project is replaced or its network changed.
    DetectionEnd detect(const Progress& progress);

    /// Ends the detection in progress, if there is one. It keeps what it has found.
    void cancel() { emit cancelled(); }

    /// Returns how many processors the last detection has found.
    int found() const { return m_found; }

signals:
    void cancelled();

private:
    /// A processor with its connection.
    struct Watched
    {
        QUuid id;
        DeviceState state;   ///< What it reported last.
        bool isLost = false; ///< It was silent for too long.
        QPointer<DeviceLink> link;
    };

    /// What the project says of a processor.
    struct Known
    {
        QUuid id;
        QString name;
        bool lit = false;
    };

    ProbePlan plan() const;
    QHash<quint32, Known> known() const;
    void takeAnswers(const QList<DeviceReport>& answers);
    void takeReport(quint32 address, const DeviceState& state);
    void takeLoss(quint32 address);
    void store(const QList<DeviceReport>& reports, bool isDetection);
    void markMissing(const ProbePlan& asked);
    void watch(quint32 address, const QUuid& id, const DeviceState& state);
    DeviceLink* open(quint32 address);
    void close(quint32 address);
    void follow();
    void send(Watched& watched, const Known& wanted);
    void returnToGone(const QHash<quint32, Known>& all);
    void correct();

    ProjectStore& m_store;
    NetworkSettings m_settings;
    int m_project;
    int m_found = 0;
    int m_storing = 0; // calls of store() in progress
    QSet<quint32> m_answered;
    QHash<quint32, Watched> m_watched; // by address
    QHash<quint32, Watched> m_gone;    // by address; without a link, their records are not there
};

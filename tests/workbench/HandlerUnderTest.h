#pragma once

#include "host/workbench/events/Notifier.h"
#include "host/workbench/handler/WorkbenchHandler.h"
#include "host/workbench/store/ProjectStore.h"
#include "host/workbench/trace/TraceModel.h"
#include "tests/workbench/RecordingObserver.h"
#include "tests/workbench/SampleRecords.h"

/// A handler over the small project, with its events recorded on the GUI thread, on a PC whose
/// network the test decides.
struct HandlerUnderTest
{
    HandlerUnderTest()
    {
        notifier.setDelivery(Notifier::Delivery::GuiThread);
        store.replace(smallProject());
        handler.SetObserver(&observer);
    }

    QString events()
    {
        QString numbers = observer.numbers();
        observer.clear();
        return numbers;
    }

    /// The last line of the log.
    TraceEntry lastEntry()
    {
        trace.flush();
        return trace.entry(trace.rowCount() - 1);
    }

    PcNetwork network;
    int networkReads = 0;
    RecordingObserver observer;
    TraceModel trace;
    Notifier notifier{trace};
    ProjectStore store{notifier};
    WorkbenchHandler handler{store, notifier, trace, [this] {
                                 ++networkReads;
                                 return network;
                             }};
};

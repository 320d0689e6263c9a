# The layers: which folder may include which. scripts/check-layers.py holds the sources to it.
#
# A row names a folder, without those below it, and the folders or single headers that it may include
# besides itself. It may also include whatever those may. A row names only folders of rows above it.
set(TSA_LAYERS
    "host/common                 |"
    "Interface                   | host/common/AppendLog.h"
    "host/widgets                | Interface host/common"
    "sdk                         | Interface"
    "sdk/relay                   | Interface"
    "sdk/record                  | sdk/relay host/common"
    "sdk/validate                | sdk sdk/relay host/common"

    "base                        | Interface host/common host/widgets"
    "ipmanage                    | base"
    "search                      | base"
    "processortree/model         | base"
    "processortree/view          | processortree/model search ipmanage"
    "plugin                      | processortree/view"

    "host/simulator/protocol     |"
    "host/simulator              | host/simulator/protocol"

    "host/workbench/addresses    | Interface host/simulator/protocol"
    "host/workbench/trace        | host/common sdk/record"
    "host/workbench/project      | host/workbench/addresses sdk/relay"
    "host/workbench/events       | host/workbench/trace host/workbench/project"
    "host/workbench/store        | host/workbench/events"
    "host/workbench/network      | host/workbench/store"
    "host/workbench/handler      | host/workbench/network"
    "host/workbench/faults       | host/workbench/handler"
    "host/workbench/session      | host/workbench/faults sdk/record"
    "host/workbench/replay       | host/workbench/session"
    "host/workbench/dialogs      | host/workbench/store"
    "host/workbench/window       | host/workbench/session host/workbench/dialogs host/widgets"
    "host/workbench/script       | host/workbench/window"
    "host/workbench/program      | host/workbench/script host/workbench/replay"
)

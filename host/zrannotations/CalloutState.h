// All of a callout that is saved and undone.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dg/DPoint3D.h"
#include "du/LocalizableString.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "zrannotations/CalloutStyle.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/scene/ShapeView.h"
#include "zrk/tree/BaseInstance.h"

namespace zrannotations {

class Callout;
class Inset;

enum CALLOUT_TYPE {
    CALLOUT_TYPE_SHAPE = 0,     // on parts of the scene
    CALLOUT_TYPE_FREE = 1,      // needs no leader
    CALLOUT_TYPE_ASSEMBLY = 2,  // on parts that stand for an assembly
};

struct LeaderState {
    dg::DPoint3D anchor;                       // in the part's local coordinates
    du::SmartPtr<zrk::ShapeInstance> part;     // null: waits for the part `instanceId` to be loaded
    du::SmartPtr<zrk::BaseInstance> assembly;  // what the part stands for, null for itself
    std::string instanceId;                    // of the part in the service structure, or of its 3-D symbol
    du::SmartPtr<Inset> inset;                 // null: in the main picture
    unsigned symbolId = 0;
    bool isHidden = false;
    bool isCollapsed = false;  // one of several leaders to equal parts of which one is drawn

    friend bool operator==(const LeaderState&, const LeaderState&) = default;
};

struct CalloutMember;

/// A value. What is derived from scene and view (dashed, dimmed, clipped, order of drawing) is no part of it.
struct CalloutState {
    std::vector<LeaderState> leaders;
    std::string definitionId;  // of the template, "" for none
    CALLOUT_TYPE type = CALLOUT_TYPE_SHAPE;
    bool isInitialized = false;
    bool isKit = false;
    bool isCustom = false;  // the text is the user's own
    bool isAnchorCalculated = false;
    std::optional<unsigned> itemId;
    du::Symbol text;
    du::Symbol localizedText;
    std::optional<du::Symbol> legacyText;
    du::LocalizableString localizable;
    dg::DPoint3D position;                    // of the label, see Callout::GetPlacementKind
    du::SmartPtr<zrk::ShapeView> screenView;  // set: the label stays at `pixel` of this view
    dg::DPoint3D pixel;
    unsigned viewId = 0;
    CalloutStyle style;
    std::vector<CalloutMember> members;  // of a combined callout, empty for others

    friend bool operator==(const CalloutState&, const CalloutState&);
};

/// A callout in a combined one, which is in no annotation set itself.
struct CalloutMember {
    du::SmartPtr<Callout> callout;  // may be null while a document is loading
    CalloutState state;

    friend bool operator==(const CalloutMember&, const CalloutMember&);
};

}  // namespace zrannotations

#pragma once

// What stands on the tools panel, as state: actions that fit the moment, effects, the history. Behaviour: `shell/`, and
// `history/` for the list of operations.

#include "core/controls.h"

namespace forms {

/// One row of the history list. Colours as `core/colours.h` says: an undone row is shown faint.
struct HistoryRow {
    std::string Key;
    std::string Text;
    std::string Picture; // a key of the tool image list
    std::int32_t ForeColor = 0;

    bool operator==(const HistoryRow&) const = default;
};

struct FrmTools {
    Shown<bool> Visible{true};
    Shown<std::int16_t> tbsTools{std::int16_t{1}}; // the tab in front: 1 actions, 2 effects, 3 history

    TreeView tvwActions;
    ListView lvwEffects;
    Button cmdAdd;
    Shown<std::vector<HistoryRow>> lvwHistory;
    Shown<std::int32_t> lvwHistorySelected{0}; // from 1; 0 none

    std::int16_t ActiveContext = 0; // the active panel: 0 media list, 1 preview, 2 timeline
};
inline FrmTools frmTools;

} // namespace forms

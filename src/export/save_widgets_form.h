#pragma once

// The widgets that dialogues about saving have in common.

#include "core/forms/compression.h"
#include "windowing/bound_dialogue.h"

class QGridLayout;

class SaveDialogue : public BoundDialogue {
public:
    using BoundDialogue::BoundDialogue;

protected:
    enum Ticks { kTicked, kPlain }; // whether each number has a box that sets it at all

    /// The four numbers, a row each: box or label, slider, value.
    QGridLayout* values(forms::CompressionValues& values, Ticks ticks);
    /// The list of profiles, or the one that the setting has chosen.
    QWidget* profile(const char* listName, const char* boxName, forms::ProfileChoice& choice);
};

#include "shell/key_form.h"

#include "shell/key_table.h"
#include "windowing/picture_widget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace {

using shell::KeyPlace;

struct Named {
    const char* start; // of the widget's name
    KeyPlace place;
};

/// The nearest part around the widget that has a name here; the picture on the whole screen is a part of its panel.
std::optional<KeyPlace> placeOf(const QWidget* widget)
{
    constexpr Named kParts[] = {
        {"picScale", KeyPlace::kScale},         {"picVideo", KeyPlace::kRow},
        {"picEffect", KeyPlace::kRow},          {"picOverlay", KeyPlace::kRow},
        {"picAudio", KeyPlace::kRow},           {"tvwTimeline", KeyPlace::kTimelineList},
        {"frmTimeline", KeyPlace::kGround},     {"frmPreview", KeyPlace::kPreview},
        {"frmMediaList", KeyPlace::kMediaList}, {"frmTools", KeyPlace::kTools},
    };
    for (; widget != nullptr; widget = widget->parentWidget()) {
        for (const Named& part : kParts) {
            if (widget->objectName().startsWith(part.start)) {
                return part.place;
            }
        }
    }
    return std::nullopt;
}

} // namespace

bool takeKeyEvent(const QKeyEvent& event)
{
    const auto place = placeOf(QApplication::focusWidget());
    const shell::Key key{programKey(event.key()), programShift(event.modifiers())};
    if (key.code == 0 || event.modifiers().testFlag(Qt::MetaModifier)) {
        return false;
    }
    return place ? shell::takeKey(*place, key, event.isAutoRepeat()) : shell::takeMenuKey(key, event.isAutoRepeat());
}

bool takeKeyFromList(const QKeyEvent& event)
{
    const shell::Key key{programKey(event.key()), programShift(event.modifiers())};
    return event.modifiers() == Qt::ShiftModifier && key.code >= 'A' && key.code <= 'Z'
           && shell::takeMenuKey(key, event.isAutoRepeat());
}

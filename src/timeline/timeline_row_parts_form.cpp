#include "timeline/timeline_row_parts_form.h"

#include "core/forms/frmMediaList.h"
#include "hand/frmTimeline_events.h"
#include "hand/row_drop.h"
#include "hand/row_events.h"
#include "hand/row_pointer.h"
#include "items/track_rows.h"
#include "media/timeline_files.h"
#include "shell/panel_places.h"

#include <QObject>

namespace {

forms::FrmTimeline& f = forms::frmTimeline;

/// The events of one kind of rows, by the index of the row.
struct RowEvents {
    void (*down)(std::int16_t, int, int, float, float);
    void (*move)(std::int16_t, int, int, float, float);
    void (*up)(std::int16_t, int, int, float, float);
    void (*key)(std::int16_t, int, int);
    void (*drop)(std::int16_t);
    void (*disable)(std::int16_t);
    void (*lock)(std::int16_t);
    void (*link)(std::int16_t);
};

/// The controls of one row.
struct RowControls {
    PictureBox& picture;
    Marker& selection;
    forms::RowPointer& pointer;
    CheckBox& chkDisable;
    ImageBox& imgDisable;
    CheckBox& chkLock;
    ImageBox& imgLock;
    CheckBox& chkLink;
    ImageBox& imgLink;
};

void showFileOfBar(const items::TrackRow& row, float x)
{
    if (moduleTarnwick::ShowFileOfBar(row, x) && !forms::frmMediaList.Visible) {
        mdiTarnwick::mnuViewMediaList_Click(); // it is there that the file is shown
    }
}

RowParts parts(const QString& name, const QString& objectName, const items::TrackRow& row, const RowControls& c,
               const RowEvents& events)
{
    using namespace frmTimeline;
    const std::int16_t i = row.index;
    const auto drop = [=, &row](int shift, float x) {
        if (const auto pos = dropPlace(row, x, shift)) {
            insertFiles(row, *pos);
        } else {
            events.drop(i);
        }
    };
    return {name,
            objectName,
            &c.picture,
            &c.selection,
            &c.pointer,
            [=](int button, int shift, float x, float y) { events.down(i, button, shift, x, y); },
            [=](int button, int shift, float x, float y) { events.move(i, button, shift, x, y); },
            [=](int button, int shift, float x, float y) { events.up(i, button, shift, x, y); },
            [=](int key, int shift) { events.key(i, key, shift); },
            drop,
            [&row](const std::vector<std::string>& paths, int shift, float x) {
                moduleTarnwick::AddDroppedFiles(paths, row, dropPlace(row, x, shift));
            },
            [&row](bool areRows, int shift, float x) { dragFilesOver(row, x, shift, areRows); },
            dragFilesOff,
            [&row](float x) { showFileOfBar(row, x); },
            {&c.chkDisable, &c.imgDisable, [=] { events.disable(i); }},
            {&c.chkLock, &c.imgLock, [=] { events.lock(i); }},
            {&c.chkLink, &c.imgLink, [=] { events.link(i); }}};
}

} // namespace

std::vector<RowParts> makeRowParts()
{
    using namespace frmTimeline;
    static constexpr RowEvents kVideo{picVideo_MouseDown, picVideo_MouseMove,   picVideo_MouseUp,
                                      picVideo_KeyDown,   picVideo_OLEDragDrop, imgDisableVideo_Click,
                                      imgLockVideo_Click, imgLinkVideo_Click};
    static constexpr RowEvents kEffect{picEffect_MouseDown, picEffect_MouseMove,   picEffect_MouseUp,
                                       picEffect_KeyDown,   picEffect_OLEDragDrop, imgDisableEffect_Click,
                                       imgLockEffect_Click, imgLinkEffect_Click};
    static constexpr RowEvents kOverlay{picOverlay_MouseDown, picOverlay_MouseMove,   picOverlay_MouseUp,
                                        picOverlay_KeyDown,   picOverlay_OLEDragDrop, imgDisableOverlay_Click,
                                        imgLockOverlay_Click, imgLinkOverlay_Click};
    static constexpr RowEvents kAudio{picAudio_MouseDown, picAudio_MouseMove,   picAudio_MouseUp,
                                      picAudio_KeyDown,   picAudio_OLEDragDrop, imgDisableAudio_Click,
                                      imgLockAudio_Click, imgLinkAudio_Click};
    std::vector<RowParts> all;
    all.push_back(parts(QObject::tr("Video"), "picVideo0", items::row(items::RowKind::kVideo, 0),
                        {f.picVideo[0], f.shpVideoSel[0], f.ptrVideo[0], f.chkDisableVideo[0], f.imgDisableVideo[0],
                         f.chkLockVideo[0], f.imgLockVideo[0], f.chkLinkVideo[0], f.imgLinkVideo[0]},
                        kVideo));
    all.push_back(
        parts(QObject::tr("Effects"), "picEffect0", items::row(items::RowKind::kEffect, 0),
              {f.picEffect[0], f.shpEffectSel[0], f.ptrEffect[0], f.chkDisableEffect[0], f.imgDisableEffect[0],
               f.chkLockEffect[0], f.imgLockEffect[0], f.chkLinkEffect[0], f.imgLinkEffect[0]},
              kEffect));
    all.push_back(
        parts(QObject::tr("Overlays"), "picOverlay0", items::row(items::RowKind::kOverlay, 0),
              {f.picOverlay[0], f.shpOverlaySel[0], f.ptrOverlay[0], f.chkDisableOverlay[0], f.imgDisableOverlay[0],
               f.chkLockOverlay[0], f.imgLockOverlay[0], f.chkLinkOverlay[0], f.imgLinkOverlay[0]},
              kOverlay));
    for (std::size_t n = 0; n < f.picAudio.size(); ++n) {
        const auto i = static_cast<std::int16_t>(n);
        all.push_back(parts(QObject::tr("Audio %1").arg(i + 1), QString("picAudio%1").arg(i),
                            items::row(items::RowKind::kAudio, i),
                            {f.picAudio[n], f.shpAudioSel[n], f.ptrAudio[n], f.chkDisableAudio[n], f.imgDisableAudio[n],
                             f.chkLockAudio[n], f.imgLockAudio[n], f.chkLinkAudio[n], f.imgLinkAudio[n]},
                            kAudio));
    }
    return all;
}

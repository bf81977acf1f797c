#include "twcore/tarnwick_timeline.h"

#include "engine/factory.h"
#include "twcore/bars/bar_pictures_interface.h"
#include "twcore/capture/capture_interface.h"
#include "twcore/engine_options.h"
#include "twcore/files/core_root.h"
#include "twcore/media/ff.h"
#include "twcore/model/timeline_interface.h"
#include "twcore/play/file_preview_interface.h"
#include "twcore/play/preview_interface.h"
#include "twcore/profiles/profiles_interface.h"
#include "twcore/project/project_store.h"
#include "twcore/save/save_interface.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace twcore {

namespace {

/// Pictures and packets that are done with go back to the system. Else the allocator learns from the first large block
/// that is freed to keep such blocks, in the heap of whatever thread freed it: a fifth of a save's memory.
void returnLargeBlocks()
{
#if defined(__GLIBC__)
    constexpr int kLarge = 128 * 1024; // bytes; what the allocator begins with
    static const int isSet = mallopt(M_MMAP_THRESHOLD, kLarge);
    static_cast<void>(isSet);
#endif
}

/// What the interfaces share, made ahead of them and living as long.
struct EngineState {
    HandleCounter handles;
    FileRegistry files{handles};
    Timeline timeline{files, handles};
};

class TarnwickTimeline final : private EngineState, public CoreRoot {
public:
    TarnwickTimeline()
        : CoreRoot(EngineState::files), streamInterface_(EngineState::files),
          preview_(EngineState::timeline, EngineState::files), filePreview_(EngineState::files),
          timelineInterface_(EngineState::timeline, [this] { preview_.refreshLook(); }),
          projectStore_(EngineState::timeline, EngineState::files),
          saveInterface_(EngineState::timeline, EngineState::files)
    {
        returnLargeBlocks();
    }

    void* interfaceOf(const std::type_info& type) noexcept override
    {
        void* found = nullptr;
        const auto offer = [&]<class Interface>(Interface* candidate) {
            found = type == typeid(Interface) ? candidate : found;
        };
        offer(static_cast<engine::ITWCoreRoot*>(this));
        offer(static_cast<engine::ITWTimeline*>(&timelineInterface_));
        offer(static_cast<engine::ITWKeyTransition*>(&timelineInterface_));
        offer(static_cast<engine::ITWMediaFiles*>(&streamInterface_));
        offer(static_cast<engine::ITWStreamInfo*>(&streamInterface_));
        offer(static_cast<engine::ITWFilePreview*>(&filePreview_));
        offer(static_cast<engine::ITWPreview*>(&preview_));
        offer(static_cast<engine::ITWProjectStore*>(&projectStore_));
        offer(static_cast<engine::ITWBarPictures*>(&barPictures_));
        offer(static_cast<engine::ITWSave*>(&saveInterface_));
        offer(static_cast<engine::ITWProfiles*>(&profilesInterface_));
        offer(static_cast<engine::ITWCapture*>(&captureInterface_));
        offer(static_cast<EngineOptions*>(&saveInterface_));
        return found;
    }

private:
    StreamInterface streamInterface_;
    PreviewInterface preview_;
    FilePreviewInterface filePreview_;
    TimelineInterface timelineInterface_;
    ProjectStore projectStore_;
    SaveInterface saveInterface_;
    ProfilesInterface profilesInterface_;
    CaptureInterface captureInterface_{profilesInterface_};
    BarPicturesInterface barPictures_{EngineState::files};
};

} // namespace

void registerTarnwickTimeline()
{
    // What the media libraries say of damaged files is told in the engine's own words, or not at all.
    av_log_set_level(AV_LOG_QUIET);
    engine::registerEngineClass(engine::kTimelineEngineClass, [] { return std::make_shared<TarnwickTimeline>(); });
}

} // namespace twcore

#include "core/shared_state.h"

namespace state {

void reset()
{
    FileCollection.Clear();
    StreamCollection.Clear();
    TrackCollection.Clear();
    OverlayTrack = 0;
    LastOpenedExtension.clear();
    FirstStreamOfFile = false;
    FileNotFoundShown = false;
    SliderPosition = 0;
    SelStartPosition = 1000;
    SelEndPosition = 2000;
    ZoomFactor = 10;
    TickSpacing = 10;
    ScaleBandColor = 0xFFBBBB;
    VideoBarFill = 0xFFFF80;
    AudioBarFill = 0x80FFFF;
    EffectBarFill = 0x80FF80;
    OverlayBarFill = 0xC0E0FF;
    ClickX = 0;
    ClickShift = false;
    ClickCtrl = false;
    WorkingFolder.clear();
    ProjectWidth = 320;
    ProjectHeight = 240;
    FrameSizeChosen = false;
    ProjectModified = false;
    ModificationCount = 0;
    MediaListDirty = false;
    ProjectSaved = false;
    ProjectFilePath.clear();
    SavedFileCount = 0;
    TemporaryProjectPath.clear();
    ProjectOpenFailed = false;
    AppSection = "Quillmont 1.1";
    RecentFilePaths.clear();
    RecentFileCount = 0;
    RecentProjectPaths.clear();
    RecentProjectCount = 0;
    NewRecentProject.clear();
    InSelectionUpdate = false;
    BusyOpening = false;
    ProjectLoadLock = false;
    OpeningRecentProject = false;
    SaveCancelled = false;
    OpeningCancelled = false;
}

} // namespace state

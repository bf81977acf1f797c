#include "shell/command_help.h"

#include <algorithm>
#include <array>

namespace shell {

namespace {

constexpr std::string_view kOpening = "3_1_Opening_Files.htm";
constexpr std::string_view kMediaList = "3_1_Opening_Files.htm#list";
constexpr std::string_view kScale = "3_2_The_Timeline.htm#scale";
constexpr std::string_view kBarPictures = "3_2_The_Timeline.htm#pictures";
constexpr std::string_view kStarting = "3_2_The_Timeline.htm#clearing";
constexpr std::string_view kSaving = "3_4_2_Saving_And_Opening.htm#save";
constexpr std::string_view kEffects = "3_7_09_Effects.htm";
constexpr std::string_view kTrimming = "3_7_03b_Trimming.htm#slider";
constexpr std::string_view kRange = "3_7_04_Range.htm";
constexpr std::string_view kClipboard = "3_7_05_Cut_Copy_Paste.htm";
constexpr std::string_view kSoundRows = "3_7_10_Sound.htm#move";
constexpr std::string_view kMarkers = "3_7_12_Markers.htm";
constexpr std::string_view kHistory = "3_7_13_History.htm";
constexpr std::string_view kPanels = "2_1_The_Window.htm#arranging";

// clang-format off
constexpr auto kCommands = std::to_array<CommandHelp>({
    {"mnuFileOpen", kOpening, "Opens video, sound and picture files; each gets a row in the media list."},
    {"mnuFileClose", "3_1_Opening_Files.htm#closing", "Takes the selected files off the media list, and what is used of them off the timeline. The files on your disk stay."},
    {"mnuFileNewProject", "3_4_1_Creating_New_Project.htm", "Begins a new project, and asks for the size of its movie."},
    {"mnuFileOpenProject", "3_4_2_Saving_And_Opening.htm#open", "Opens a project that was saved."},
    {"mnuFileCloseProject", "3_4_2_Saving_And_Opening.htm#close", "Takes everything off the timeline and the media list."},
    {"mnuFileSaveProject", kSaving, "Saves the project: the media list and what lies on the timeline."},
    {"mnuFileSaveProjectAs", kSaving, "Saves the project under another name, and goes on under that."},
    {"mnuFileExportTimeline", "3_5_1_Saving_Timeline.htm", "Makes a movie file of the timeline, which other programs can play."},
    {"mnuFilePreview", "3_1_Opening_Files.htm#look", "Opens the selected file in the program that your desktop has for it."},
    {"mnuFileResentProjects", "3_4_2_Saving_And_Opening.htm#recent", "The projects that you used last. Choosing one drops the present project without asking."},
    {"mnuFileResentFiles", kOpening, "The files that you opened last."},
    {"mnuFileExit", "3_4_2_Saving_And_Opening.htm#close", "Closes Quillmont, and asks first when there are changes."},
    {"mnuEditUndo", kHistory, "Takes the last step back."},
    {"mnuEditRedo", kHistory, "Makes the step again that was taken back last."},
    {"mnuEditAddToTimeline", "3_7_01_Adding.htm", "Puts the files that are selected in the media list behind what lies on the timeline."},
    {"mnuEditClearTimeline", kStarting, "Takes everything off all rows."},
    {"mnuEditStretchMode", "3_7_03a_Setting_Stretch_Mode.htm", "Chooses how the selected picture fits into the frame."},
    {"mnuEditAddEffectToTimeline", kEffects, "Adds an effect at the slider or over the range."},
    {"mnuAddEffectFade", kEffects, "Comes up from black, goes down to black, or dips to black over a cut."},
    {"mnuAddEffectPixelate", kEffects, "Coarse blocks, which grow and shrink again."},
    {"mnuAddEffectBlur", kEffects, "Makes the picture soft."},
    {"mnuAddEffectWave", kEffects, "Lets the picture sway as if under water."},
    {"mnuAddEffectEmboss", kEffects, "Turns the picture into a grey relief that stands out."},
    {"mnuAddEffectEngrave", kEffects, "Turns the picture into a grey relief that is pressed in."},
    {"mnuEditClearEffect", kStarting, "Takes all effects off."},
    {"mnuEditAddToOverlay", "3_7_08_Overlays.htm", "Lays the selected picture or film over the video."},
    {"mnuEditClearOverlay", kStarting, "Takes all overlays off."},
    {"mnuEditSetOverlayTransparency", "3_7_08_Overlays.htm#key", "Chooses which colour of the selected overlay is transparent."},
    {"mnuEditCut", kClipboard, "Takes the range or the selected bars off the timeline, and keeps them for pasting."},
    {"mnuEditCopy", kClipboard, "Keeps the range or the selected bars for pasting, and changes nothing."},
    {"mnuEditPaste", "3_7_05_Cut_Copy_Paste.htm#paste", "Puts what was cut or copied at the slider; what lies behind moves on."},
    {"mnuEditClear", kClipboard, "Takes the range or the selected bars off the timeline. The gap stays."},
    {"mnuEditCrop", "3_7_06_Crop.htm", "Keeps the range or the selected bars, and removes the rest."},
    {"mnuEditCropSources", "3_7_06_Crop.htm#sources", "Trims the pieces that the range touches to what lies in it."},
    {"mnuEditAddtoAudio1", kSoundRows, "Moves the selected sound to the row Audio 1."},
    {"mnuEditAddtoAudio2", kSoundRows, "Moves the selected sound to the row Audio 2."},
    {"mnuEditStartSel", kRange, "Lets the range begin at the slider."},
    {"mnuEditEndSel", kRange, "Lets the range end at the slider."},
    {"mnuEditRestoreSize", "3_7_03_Resizing.htm#restore", "Gives the selected bars their own length and speed again."},
    {"mnuEditTrimStart", kTrimming, "Lets the selected bars begin at the slider. Their speed stays."},
    {"mnuEditTrimEnd", kTrimming, "Lets the selected bars end at the slider. Their speed stays."},
    {"mnuEditCloseGap", "3_7_05_Cut_Copy_Paste.htm#gap", "Deletes, and draws up what lies behind."},
    {"mnuEditSelectWithSound", "3_7_02_Selecting_And_Moving.htm#sound", "Selects with a picture the sound that belongs to it, or with a sound its picture."},
    {"mnuViewTimelineList", "3_2_The_Timeline.htm#timelinelist", "Shows or hides the list at the left of the timeline."},
    {"mnuViewML_LargeIcon", kMediaList, "Shows the files of the media list as large icons."},
    {"mnuViewML_SmallIcon", kMediaList, "Shows the files of the media list as small icons."},
    {"mnuViewML_List", kMediaList, "Shows the files of the media list by their names."},
    {"mnuViewML_Detail", kMediaList, "Shows the files of the media list with all columns."},
    {"mnuViewSelectionSliders", kRange, "Shows or hides the two sliders that mark a range."},
    {"mnuViewSnapping", "3_2_The_Timeline.htm#snapping", "Whether what you drag is drawn to cuts and markers near by."},
    {"mnuViewPicturesOnBars", kBarPictures, "Shows on the bars what is seen in them."},
    {"mnuViewWavesOnBars", kBarPictures, "Shows on the bars of sounds how loud they are."},
    {"mnuViewWholeFilm", kScale, "Shows the film from its start to its end."},
    {"mnuViewSelection", kScale, "Shows the range, or what is selected, as large as it fits."},
    {"mnuViewFollowEdits", kScale, "Whether the view goes to what an edit has brought."},
    {"mnuToolsZoomIn", kScale, "Shows a shorter time, in more detail."},
    {"mnuToolsZoomOut", kScale, "Shows a longer time, in less detail."},
    {"mnuToolsAddBookmark", kMarkers, "Sets a marker at the slider."},
    {"mnuToolsRemoveBookmark", kMarkers, "Removes the marker that was clicked last."},
    {"mnueditclearmarkers", kMarkers, "Removes all markers."},
    {"mnuToolsCapture", "3_6A_Capturing_Media.htm", "Records from a camera, a microphone or the screen."},
    {"mnuToolsSplitTimeline", "3_7_07_Split_And_Pack.htm#split", "Cuts in two what lies under the slider."},
    {"mnuToolsPackTimelineBars", "3_7_07_Split_And_Pack.htm#pack", "Closes all gaps."},
    {"mnuToolsTakeSnap", "3_7_11_Taking_Snap.htm", "Saves the picture at the slider as a file."},
    {"mnuToolsRepeatAudio", "3_7_10_Sound.htm#repeat", "Repeats the last piece of the selected sound's row until the video ends."},
    {"mnuToolsAddText", "3_7_14_Adding_Text.htm", "Adds words that you write as an overlay."},
    {"mnuToolsOptions", "2_2_Understanding_Preferences.htm", "What Quillmont begins with: folder, colours, and how movies are saved."},
    {"mnuToolsTrimMode", "3_7_03b_Trimming.htm#drag", "While it is on, a drag at either end of a bar trims it."},
    {"mnuViewMediaList", kPanels, "Shows or hides the media list."},
    {"mnuViewPreview", kPanels, "Shows or hides the preview."},
    {"mnuViewTimeline", kPanels, "Shows or hides the timeline."},
    {"mnuViewTools", kPanels, "Shows or hides the tools panel."},
    {"mnuWindowArrangeAll", kPanels, "Puts all panels to their places."},
    {"mnuHelpSection", "1_Welcome.htm", "Opens the help."},
    {"mnuHelpTutorial", "tutorial/index.html", "Shows how a small film is made, in ten steps."},
    {"mnuHelpWhatsThis", "1_Welcome.htm#where", "Turns the next click into a question: what is this?"},
    {"mnuHelpReportBugs", "2_5_Reporting.htm", "Opens the page on the web that takes reports."},
    {"mnuHelpNewFeatureRequest", "2_5_Reporting.htm", "Opens the page on the web that takes wishes."},
    {"mnuHelpAbout", "2_5_Reporting.htm#about", "Which version this is, and what it is built on."},
    {"ADD_EFFECT", kEffects, "Adds the effect that is selected in the tools panel, at the slider or over the range."},
});

constexpr auto kForms = std::to_array<FormTopic>({
    {"frmNewProject", "3_4_1_Creating_New_Project.htm"},
    {"frmExportTimeline", "3_5_1_Saving_Timeline.htm"},
    {"frmAdvancedSaveOptions", "3_5_2_Advanced_Save_Options.htm"},
    {"frmProgressBar", "3_5_1_Saving_Timeline.htm#running"},
    {"frmProfileProperties", "3_5_2a_Advanced_Save_Options_WMF.htm"},
    {"frmPreferences", "2_2_Understanding_Preferences.htm"},
    {"frmCapture", "3_6A_Capturing_Media.htm"},
    {"frmCaptureOptions", "3_6A_1_2_Capture_Menu.htm#Options"},
    {"frmCaptureValues", "3_6A_1_1_File_Menu.htm#SetCaptureFile"},
    {"frmTakeSnap", "3_7_11_Taking_Snap.htm"},
    {"frmStretchMode", "3_7_03a_Setting_Stretch_Mode.htm"},
    {"frmKeyColor", "3_7_08_Overlays.htm#key"},
    {"frmAddText", "3_7_14_Adding_Text.htm"},
    {"frmLeftovers", "3_4_3_Recovering_Work.htm"},
    {"frmAbout", "2_5_Reporting.htm#about"},
    {"frmbug", "2_5_Reporting.htm#dialogue"},
    // The parts of the main window, those that stand in a panel ahead of it.
    {"fmeFrameOffer", "3_4_1_Creating_New_Project.htm#fit"},
    {"txtFilter", "3_1_Opening_Files.htm#list"},
    {"sldSeekBar", "3_3_Playing.htm#search"},
    {"cmdMute", "3_3_Playing.htm#volume"},
    {"tvwTimeline", "3_2_The_Timeline.htm#timelinelist"},
    {"picScale", "3_2_The_Timeline.htm#slider"},
    {"lvwEffects", "3_7_09_Effects.htm"},
    {"lvwHistory", "3_7_13_History.htm#list"},
    {"frmMediaList", "3_1_Opening_Files.htm"},
    {"frmPreview", "3_3_Playing.htm"},
    {"frmTimeline", "3_2_The_Timeline.htm"},
    {"frmTools", "2_1_The_Window.htm#panels"},
});
// clang-format on

const CommandHelp* byName(std::string_view name)
{
    const auto* const found = std::ranges::find(kCommands, name, &CommandHelp::name);
    return found == kCommands.end() ? nullptr : found;
}

const CommandHelp* byHandler(void (*handler)())
{
    for (const MenuRow& row : menuBar()) {
        if (handler != nullptr && row.handler == handler) {
            return byName(row.name);
        }
    }
    return nullptr;
}

} // namespace

const CommandHelp* helpOf(const MenuRow& row)
{
    const CommandHelp* const own = byName(row.name);
    return own != nullptr ? own : byHandler(row.handler);
}

const CommandHelp* helpOf(const ToolRow& row)
{
    const CommandHelp* const own = byName(row.key);
    return own != nullptr ? own : byHandler(row.handler);
}

std::span<const FormTopic> formTopics() { return kForms; }

std::string_view topicOfForm(std::string_view form)
{
    const auto* const found = std::ranges::find(kForms, form, &FormTopic::form);
    return found == kForms.end() ? std::string_view() : found->topic;
}

} // namespace shell

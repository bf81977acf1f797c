#pragma once

// One entry of the history: the operation's type, and the timeline as it stood just before it.
//
// The routines named ...OperationData move the data between the entry and the module's working set
// (`ModuleHistory::WorkingImage`); the entry's counts say how many items, and are set before the data. An entry holds
// records only, and just as many as it has items. Copies of an entry share them. Interface thread only.

#include "history/image_records.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class cHistoryData {
public:
    void SetOperationType(std::string_view type) { operationType_ = type; }
    /// The sources of video and audio tracks. All three setters raise error 9 when the working set holds less.
    void SetEditOperationData();
    void SetFileOperationData();
    void SetEffectOperationData();
    /// Transitions and sources of the overlay track, of each as many as the transition count says.
    void SetTransitionOperationData();
    void SetScrollValue(std::int32_t value) { scrollValue_ = value; }
    std::int32_t GetScrollValue() const { return scrollValue_; }
    void GetEditOperationData() const;
    void GetEffectOperationData() const;
    void GetTransitionOperationData() const;
    void GetFileOperationData() const;
    const std::string& GetOperationType() const { return operationType_; }
    void SetSrcCount(std::int16_t count) { sourceCount_ = count; }
    std::int16_t GetSrcCount() const { return sourceCount_; }
    void SetEffectCount(std::int16_t count) { effectCount_ = count; }
    std::int16_t GetEffectCount() const { return effectCount_; }
    void SetTransitionCount(std::int16_t count) { transitionCount_ = count; }
    std::int16_t GetTransitionCount() const { return transitionCount_; }

    /// Whether the image was read whole. One that was not is never put in the timeline's place.
    void SetWhole(bool isWhole) { isWhole_ = isWhole; }
    bool IsWhole() const { return isWhole_; }

    /// The image itself, which nobody changes any more: any thread may read it for as long as it is held.
    std::shared_ptr<const ModuleHistory::ImageRecords> Records() const { return records_; }

private:
    ModuleHistory::ImageRecords& ownRecords();

    std::string operationType_;
    ModuleHistory::FileImage fileOperation_;
    std::shared_ptr<ModuleHistory::ImageRecords> records_ = std::make_shared<ModuleHistory::ImageRecords>();
    std::int16_t sourceCount_ = 0;
    std::int16_t effectCount_ = 0;
    std::int16_t transitionCount_ = 0; // counts the overlay sources too
    std::int32_t scrollValue_ = 0;
    bool isWhole_ = false;
};

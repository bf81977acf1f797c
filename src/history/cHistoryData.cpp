#include "history/cHistoryData.h"

#include "engine/runtime_error.h"
#include "history/timeline_images.h"

using ModuleHistory::WorkingImage;

namespace {

template <class Record>
std::vector<Record> firstOf(const std::vector<Record>& array, std::int16_t count)
{
    if (count < 0 || static_cast<std::size_t>(count) > array.size()) {
        throw engine::RuntimeError(9, "Subscript out of range");
    }
    return {array.begin(), array.begin() + count};
}

} // namespace

void cHistoryData::SetEditOperationData() { editOperation_ = firstOf(WorkingImage.Sources, sourceCount_); }

void cHistoryData::SetFileOperationData() { fileOperation_ = ModuleHistory::WorkingFile; }

void cHistoryData::SetEffectOperationData() { effectOperation_ = firstOf(WorkingImage.Effects, effectCount_); }

void cHistoryData::SetTransitionOperationData()
{
    transitionOperation_ = firstOf(WorkingImage.Transitions, transitionCount_);
    overlaySources_ = firstOf(WorkingImage.OverlaySources, transitionCount_);
}

void cHistoryData::GetEditOperationData() const { WorkingImage.Sources = editOperation_; }

void cHistoryData::GetEffectOperationData() const { WorkingImage.Effects = effectOperation_; }

void cHistoryData::GetTransitionOperationData() const
{
    WorkingImage.Transitions = transitionOperation_;
    WorkingImage.OverlaySources = overlaySources_;
}

void cHistoryData::GetFileOperationData() const { ModuleHistory::WorkingFile = fileOperation_; }

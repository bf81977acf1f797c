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

ModuleHistory::ImageRecords& cHistoryData::ownRecords()
{
    if (records_.use_count() > 1) {
        records_ = std::make_shared<ModuleHistory::ImageRecords>(*records_);
    }
    return *records_;
}

void cHistoryData::SetEditOperationData() { ownRecords().Sources = firstOf(WorkingImage.Sources, sourceCount_); }

void cHistoryData::SetFileOperationData() { fileOperation_ = ModuleHistory::WorkingFile; }

void cHistoryData::SetEffectOperationData() { ownRecords().Effects = firstOf(WorkingImage.Effects, effectCount_); }

void cHistoryData::SetTransitionOperationData()
{
    ownRecords().Transitions = firstOf(WorkingImage.Transitions, transitionCount_);
    ownRecords().OverlaySources = firstOf(WorkingImage.OverlaySources, transitionCount_);
}

void cHistoryData::GetEditOperationData() const { WorkingImage.Sources = records_->Sources; }

void cHistoryData::GetEffectOperationData() const { WorkingImage.Effects = records_->Effects; }

void cHistoryData::GetTransitionOperationData() const
{
    WorkingImage.Transitions = records_->Transitions;
    WorkingImage.OverlaySources = records_->OverlaySources;
}

void cHistoryData::GetFileOperationData() const { ModuleHistory::WorkingFile = fileOperation_; }

#pragma once

// The rows of the history list, `forms::frmTools.lvwHistory`, counted from 1. Interface thread only.

#include "history/operation_words.h"

#include <cstdint>

namespace ModuleHistory {

std::int32_t rowCount();
/// False for a row that is not there.
bool isInForce(std::int32_t row);
bool isUndone(std::int32_t row);
/// At the end, in force. A face without a caption adds nothing.
void addRow(const RowFace& face);
/// Does nothing for a row that is not there.
void removeRow(std::int32_t row);
/// Removes the last rows until no more than that many stand.
void keepRows(std::int32_t count);
/// Gives all rows from first to last one state.
void setInForce(std::int32_t first, std::int32_t last, bool inForce);

} // namespace ModuleHistory

#include "history/history_rows.h"

#include "core/colours.h"
#include "core/forms/frmTools.h"

#include <utility>

namespace ModuleHistory {

namespace {

forms::FrmTools& form = forms::frmTools;

constexpr std::int32_t kInForce = colours::kWindowText;
constexpr std::int32_t kUndone = colours::kButtonFace;

bool isThere(std::int32_t row) { return row >= 1 && row <= rowCount(); }

std::int32_t colourOf(std::int32_t row) { return form.lvwHistory.get()[static_cast<std::size_t>(row) - 1].ForeColor; }

template <class Change>
void changeRows(Change change)
{
    auto rows = form.lvwHistory.get();
    change(rows);
    form.lvwHistory = std::move(rows);
    if (form.lvwHistorySelected > rowCount()) {
        form.lvwHistorySelected = 0;
    }
}

} // namespace

std::int32_t rowCount() { return static_cast<std::int32_t>(form.lvwHistory.get().size()); }

bool isInForce(std::int32_t row) { return isThere(row) && colourOf(row) == kInForce; }

bool isUndone(std::int32_t row) { return isThere(row) && colourOf(row) == kUndone; }

void addRow(const RowFace& face)
{
    if (!face.caption.empty()) {
        changeRows([&](auto& rows) {
            rows.push_back({{}, std::string(face.caption), std::string(face.icon), kInForce});
        });
    }
}

void removeRow(std::int32_t row)
{
    if (isThere(row)) {
        changeRows([&](auto& rows) { rows.erase(rows.begin() + (row - 1)); });
    }
}

void keepRows(std::int32_t count)
{
    if (rowCount() > count) {
        changeRows([&](auto& rows) { rows.resize(static_cast<std::size_t>(count)); });
    }
}

void setInForce(std::int32_t first, std::int32_t last, bool inForce)
{
    changeRows([&](auto& rows) {
        for (std::int32_t row = first; row <= last && isThere(row); ++row) {
            rows[static_cast<std::size_t>(row) - 1].ForeColor = inForce ? kInForce : kUndone;
        }
    });
}

} // namespace ModuleHistory

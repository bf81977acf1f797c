#include "project/row_options.h"

#include "items/track_rows.h"

#include <pugixml.hpp>

#include <string>

namespace project {

namespace {

std::string nameOf(const items::TrackRow& row)
{
    const std::string kind = items::nameOf(row.kind);
    return row.kind == items::RowKind::kAudio ? kind + " " + std::to_string(row.index + 1) : kind;
}

void set(CheckBox& box, bool isOn) { box.Value = static_cast<std::int16_t>(isOn ? 1 : 0); }

static_assert(std::tuple_size_v<AllRowOptions> == std::tuple_size_v<std::decay_t<decltype(items::rows())>>);

} // namespace

void storeRowOptions(pugi::xml_node root)
{
    auto rows = root.append_child("Rows");
    for (const items::TrackRow& row : items::rows()) {
        auto node = rows.append_child("Row");
        node.append_attribute("Name") = nameOf(row).c_str();
        node.append_attribute("Link") = int{row.chkLink.Value};
        node.append_attribute("Lock") = int{row.chkLock.Value};
        node.append_attribute("Disable") = int{row.chkDisable.Value};
    }
}

void bringRowOptions(const AllRowOptions& all)
{
    auto options = all.begin();
    for (const items::TrackRow& row : items::rows()) {
        set(row.chkLink, options->isLinked);
        set(row.chkLock, options->isLocked);
        set(row.chkDisable, options->isDisabled);
        items::setLinkPicture(row);
        items::setLockPicture(row);
        items::setDisablePicture(row);
        ++options;
    }
}

} // namespace project

#pragma once

// Project files open in this program: the class of their ending in the system's table. The table speaks its own
// language, as to back slashes and the ending of programs; the port behind it says the same to the desktop at hand.
//
// Nothing is raised to the caller. Interface thread only.

#include "core/platform.h"

namespace ModuleAssociateIcon {

/// One value of a key; without a name the key's own.
void SetRegistryString(ClassRoot& root, std::string_view key, std::string_view valueName, std::string_view text);
void SetRegistryNumber(ClassRoot& root, std::string_view key, std::string_view valueName, std::uint32_t number);

/// Writes what belongs to project files over whatever stands there, and tells the desktop. Does nothing where there is
/// no such table.
void ApplyFileAssociation();

} // namespace ModuleAssociateIcon

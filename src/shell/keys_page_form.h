#pragma once

// The rows of the help's page of keys: what the tables of the menus and of the panels say, in the words of the menus
// and in the names of keys that the screens use.

#include <QString>

namespace keys_page {

/// The rows of the table "commands" or "panels", for the page; empty for another name.
QString rowsOf(const QString& table);

} // namespace keys_page

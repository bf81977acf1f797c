#pragma once

// The recent files and the recent projects: two lists that are alike but for their names. They stand in `state::`; the
// main window's menus `mnuFileRF` and `mnuFileRP` show them. Every routine has its trap. Interface thread only.

namespace ModuleSettings {

/// At start: fill the recent lists and their menus from the store. An empty list shows "Empty", disabled.
/// Of the projects only the newest comes back.
void GetResentFilesFromReg();
void GetResentProjectFilesFromReg();

/// Puts the path of the last file of the media list on top of the recent files, and stores them. Repeats are kept out
/// by the callers. With an empty media list the person is told, unless `state::FileNotFoundShown` says that it was.
///
///     read at start: A B C D (A the newest)   ->  array A B C D     menu A B C D
///     E is opened                             ->  array A B C D E   menu E D C B
///
/// The menu is the array read backwards, also where it came from the store: kept, older versions share the store, and
/// all of them read and write it in this order.
void UpdateResentFileMenu();
/// The same with the path in `state::NewRecentProject`; an empty one changes nothing and is logged.
void UpdateResentProjectMenu();

} // namespace ModuleSettings

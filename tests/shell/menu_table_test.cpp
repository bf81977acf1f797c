// The menus and the toolbar: that their entries do not get in each other's way.

#include "shell/menu_table.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

namespace {

using namespace shell;

TEST(MenuTable, NamesKeysAndStatesAreTheirOwn)
{
    std::set<std::string_view> names;
    std::set<std::string_view> keys;
    std::set<const Menu*> states;
    std::set<const forms::ToolButton*> buttons;
    for (const auto& menu : {menuBar(), mediaListContext(), editContext()}) {
        for (const MenuRow& row : menu) {
            if (!row.name.empty()) {
                EXPECT_TRUE(names.insert(row.name).second) << row.name;
                EXPECT_TRUE(states.insert(row.state).second) << row.name;
            }
            EXPECT_TRUE(row.shortcut.empty() || keys.insert(row.shortcut).second) << row.shortcut;
        }
    }
    for (const ToolRow& row : toolBar()) {
        EXPECT_TRUE(buttons.insert(row.state).second) << row.key;
    }
    EXPECT_EQ(buttons.size(), 21U);
}

TEST(MenuTable, WhatRunsTheSameIsEnabledTheSame)
{
    std::map<void (*)(), const MenuRow*> ofTheBar;
    for (const MenuRow& row : menuBar()) {
        ofTheBar.emplace(row.handler, &row);
    }
    ofTheBar.erase(nullptr); // not built yet
    int shared = 0;
    const auto check = [&](std::string_view name, void (*handler)(), CommandTest test) {
        if (const auto found = ofTheBar.find(handler); found != ofTheBar.end()) {
            ++shared;
            EXPECT_EQ(test, found->second->test) << name << " and " << found->second->name;
        }
    };
    for (const auto& menu : {mediaListContext(), editContext()}) {
        for (const MenuRow& row : menu.subspan(1)) {
            check(row.name, row.handler, row.test);
            EXPECT_TRUE(row.handler == nullptr || ofTheBar.contains(row.handler)) << row.name;
        }
    }
    for (const ToolRow& row : toolBar()) {
        check(row.key, row.handler, row.test);
    }
    EXPECT_GT(shared, 25);
}

} // namespace

#pragma once

// A menu of the add-in's on the host's worksheet menu bar.

#include <string>
#include <vector>

namespace metrify {

struct menu_item {
    std::string text;
    std::string macro;
    std::string status_text;
};

/// Menus are named to the host by their captions.
struct menu_def {
    std::string name;                 ///< as given
    std::string caption;              ///< in the user's language, perhaps with an ampersand
    std::string status_text;          ///< for the status bar
    std::vector<menu_item> items;     ///< those that wait for the menu to go onto the bar
    bool present = false;             ///< the menu stands on the bar
    const menu_def* parent = nullptr; ///< of a submenu; must outlive it
};

/// Starts a menu anew, without items and not on the bar.
void menu_init(menu_def& menu, const std::string& name, const std::string& status_text);

/// Adds an item: to the host's bar if the menu stands there, otherwise for the time when it will.
void menu_add_command(menu_def& menu, const std::string& text, const std::string& macro,
                      const std::string& status_text);

/// Puts the menu onto the bar, or with a parent into that menu. It goes before the menu called `before`, or
/// with that empty to a position from 1; at the end of the bar if there is no such menu and no position. True
/// if it now stands there.
bool menu_add_to_bar(menu_def& menu, const menu_def* parent, const std::string& before, int position);

/// Takes the menu from the bar. True on success.
bool menu_remove(const menu_def& menu);

} // namespace metrify

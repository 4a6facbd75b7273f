#pragma once

// A menu on the worksheet menu bar of the host.

#include <string>
#include <vector>

namespace metrify {

struct menu_item {
    std::string text;
    std::string macro;
    std::string status_text;
};

/// The host identifies menus by their captions.
struct menu_def {
    std::string name;                 ///< as given
    std::string caption;              ///< in the user's language; may contain an ampersand
    std::string status_text;          ///< for the status bar
    std::vector<menu_item> items;     ///< those added before the menu was on the bar
    bool present = false;             ///< the menu is on the bar
    const menu_def* parent = nullptr; ///< of a submenu; must outlive it
};

/// Initialises a menu without items that is not on the bar.
void menu_init(menu_def& menu, const std::string& name, const std::string& status_text);

/// Adds an item: at once if the menu is on the bar, otherwise when it is added to the bar.
void menu_add_command(menu_def& menu, const std::string& text, const std::string& macro,
                      const std::string& status_text);

/// Adds the menu to the bar, or to the parent if there is one. It is inserted before the menu called
/// `before`; if that is empty, at a position from 1; at the end of the bar if there is no such menu and no
/// position. True on success.
bool menu_add_to_bar(menu_def& menu, const menu_def* parent, const std::string& before, int position);

/// Removes the menu from the bar. True on success.
bool menu_remove(const menu_def& menu);

} // namespace metrify

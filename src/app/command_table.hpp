// The menu bar as data: every item with its menu, caption and start state, and the enabled state
// of each command while the program runs. The front end builds its menus from the table and
// mirrors the state.
#pragma once

#include <functional>
#include <map>
#include <span>
#include <string_view>

namespace aerix {

struct MenuEntry {
    std::string_view menu;     // "File", "Edit", "View", "Utils", "Tools"
    std::string_view submenu;  // "" for an item of the menu itself ("Maps", "E6b utilities", ...)
    std::string_view caption;
    unsigned id = 0;
    bool greyedAtStart = false;
};

// Every item in menu order.
std::span<const MenuEntry> MenuTable();

// Which commands are enabled. Starts from the table's greyed states.
class MenuState {
  public:
    MenuState();
    bool Enabled(unsigned id) const;
    void Enable(unsigned id, bool enabled);
    // Called with every change (id, enabled).
    void OnChange(std::function<void(unsigned, bool)> listener) { listener_ = std::move(listener); }

  private:
    std::map<unsigned, bool> enabled_;
    std::function<void(unsigned, bool)> listener_;
};

}  // namespace aerix

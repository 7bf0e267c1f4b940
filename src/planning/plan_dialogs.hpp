// The File menu's plan dialogs: "New plan", "Open plan" and "Delete plan". Each plan is a
// database of type 19901 in the object store, sorted on the sector number.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "planning/plan_state.hpp"
#include "settings/settings_state.hpp"
#include "store/nav_data_state.hpp"

namespace aerix {

// The plans' names, in the order the object store lists them.
std::vector<std::u16string> ListPlans();

class NewPlanDialog {
  public:
    static constexpr std::string_view kCaption = "Create new Plan";
    static constexpr std::size_t kMaxName = 23;

    NewPlanDialog(SettingsState& settings, PlanState& plan) : settings_(settings), plan_(plan) {}

    // The name field holds at most 23 characters.
    void SetName(std::u16string_view name);
    const std::u16string& Name() const { return name_; }
    // OK: an empty name changes nothing; otherwise creates the plan and makes it the active,
    // empty plan, or says "Could not create new plan". Returns 1 either way.
    int Ok();
    int Cancel() { return 2; }

  private:
    SettingsState& settings_;
    PlanState& plan_;
    std::u16string name_;
};

class PlanChooserDialog {
  public:
    // Sets the navigation-bar title and lists the plans.
    void Open();
    const std::vector<std::u16string>& Entries() const { return entries_; }
    // OK or cancel: restores the title "Aerix"; returns 1 or 2.
    int End(int result);

  protected:
    explicit PlanChooserDialog(std::string_view title) : title_(title) {}
    std::vector<std::u16string> entries_;

  private:
    std::string_view title_;
};

class OpenPlanDialog : public PlanChooserDialog {
  public:
    static constexpr std::string_view kTitle = "Open a plan";
    OpenPlanDialog(SettingsState& settings, PlanState& plan)
        : PlanChooserDialog(kTitle), settings_(settings), plan_(plan) {}
    // A tap on an entry makes that plan active at once and ends the dialog with 1; -1 (no
    // entry selected) does nothing and returns 0.
    int Choose(int index);

  private:
    SettingsState& settings_;
    PlanState& plan_;
};

// What the main window does after "Open plan" ended with 1: the arrays must be reloaded and the
// plan recomputed with the current aircraft's airspeeds. (It also stops a running feed.)
void AfterPlanOpened(const SettingsState& settings, PlanState& plan, NavDataState& nav);

class DeletePlanDialog : public PlanChooserDialog {
  public:
    static constexpr std::string_view kTitle = "Delete a plan";
    explicit DeletePlanDialog(const SettingsState& settings)
        : PlanChooserDialog(kTitle), settings_(settings) {}
    // A tap on an entry: the active plan is refused with "Cannot delete - active plan"
    // ("Warning"); any other is deleted at once, without asking. Ends with 1; 0 without an entry.
    int Choose(int index);

  private:
    const SettingsState& settings_;
};

}  // namespace aerix

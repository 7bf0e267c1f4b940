#include "planning/plan_dialogs.hpp"

#include "planning/sector_computation.hpp"
#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "store/record_store.hpp"

namespace aerix {

namespace {

void SetTitle(std::string_view title) {
    if (platform::Sys().ui)
        platform::Sys().ui->SetTitle(title);
}

}  // namespace

std::vector<std::u16string> ListPlans() {
    return DatabaseNames(schema::kPlanType);
}

void NewPlanDialog::SetName(std::u16string_view name) {
    name_ = std::u16string(name.substr(0, kMaxName));
}

int NewPlanDialog::Ok() {
    if (name_.empty())
        return 1;
    CeOid oid = CreatePlanDatabase(name_);
    if (oid == 0) {
        // A name in use says the plain words; a lock, a full disk or a read-only file says why.
        platform::ShowError(
            StoreFailureText(platform::LastStoreError(), "Could not create new plan"));
        return 1;
    }
    settings_.CurrentPlanId = oid;
    settings_.ActivePlanName.assign(name_);
    plan_.PlanSectorCount = 0;
    plan_.HighlightedSector = 0;
    if (platform::Sys().ui)
        platform::Sys().ui->InvalidateMainWindow(true);
    return 1;
}

void PlanChooserDialog::Open() {
    SetTitle(title_);
    entries_ = ListPlans();
}

int PlanChooserDialog::End(int result) {
    SetTitle("Aerix");
    return result;
}

int OpenPlanDialog::Choose(int index) {
    if (index < 0 || index >= static_cast<int>(entries_.size()))
        return 0;
    const std::u16string& name = entries_[static_cast<std::size_t>(index)];
    settings_.ActivePlanName.assign(name);
    {
        // A plan that cannot be opened leaves no current plan id.
        DbHandle h = OpenDatabase(name, schema::kSecNumber);
        settings_.CurrentPlanId = h ? h.DatabaseOid() : 0;
    }
    plan_.HighlightedSector = 0;
    return End(1);
}

void AfterPlanOpened(const SettingsState& settings, PlanState& plan, NavDataState& nav) {
    nav.ArraysPending = 1;
    RefreshPlanSectorCount(settings, plan);
    RecomputePlan(settings, plan, 1);
}

int DeletePlanDialog::Choose(int index) {
    if (index < 0 || index >= static_cast<int>(entries_.size()))
        return 0;
    const std::u16string& name = entries_[static_cast<std::size_t>(index)];
    if (name == settings_.ActivePlanName.view()) {
        platform::ShowNotice("Cannot delete - active plan", "Warning");
        return End(1);
    }
    CeOid oid = 0;
    {
        DbHandle h = OpenDatabase(name, schema::kSecNumber);
        oid = h ? h.DatabaseOid() : 0;
    }
    if (oid != 0)
        DeleteDatabase(oid);
    entries_ = ListPlans();
    return End(1);
}

}  // namespace aerix

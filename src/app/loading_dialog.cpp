#include "app/loading_dialog.hpp"

#include "app/app_state.hpp"
#include "store/airspace_loader.hpp"
#include "store/nav_database_loader.hpp"

namespace aerix {

int LoadingDialogModel::OnTimer() {
    LoadAirspace(g_app.nav);
    LoadNavDatabase(g_app.settings, g_app.nav);
    g_app.nav.ArraysPending = 0;
    return 1;
}

}  // namespace aerix

#include "app/app_state.hpp"

#include <new>

namespace aerix {

AppState g_app;

void ResetAppState() {
    g_app.~AppState();
    new (&g_app) AppState();
}

}  // namespace aerix

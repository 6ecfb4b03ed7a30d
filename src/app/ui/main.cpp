#include "app/ui/tarn_app.h"

wxIMPLEMENT_APP(tarn::TTarnApp);

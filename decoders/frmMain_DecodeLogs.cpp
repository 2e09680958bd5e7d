// The three decode logs. Their lines carry no mark; the newest is the current one.
#include "app/frmMain.h"

namespace app {

void frmMain::LogAis(std::string_view sLine) { lstAisData.Lines.Add(sLine); }
void frmMain::LogGps(std::string_view sLine) { lstGpsData.Lines.Add(sLine); }
void frmMain::LogRx(std::string_view sLine) { lstRxData.Lines.Add(sLine); }

}  // namespace app

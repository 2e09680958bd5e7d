// What the hand can do.
#include "tests/simulation/Hand.h"

#include <iterator>

namespace simulation {

namespace {

using simulator::Random;

constexpr int LastTab = 10;
constexpr int LastReceiverInterval = 255;
constexpr double PerSecond = 10 / 3600.0;

struct Action {
    const char* sName;
    void (*Do)(Scene&, Random&);
};

void TurnTab(Scene& t, Random& tChance) {
    t.pWindow->SSTab.SetTab(tChance.Whole(0, LastTab));
    t.TakeOver();
}
void Sort(Scene& t, Random& tChance) { t.pWindow->cmbTargetSort.SetListIndex(tChance.Whole(0, 2)); }
void ShowDetail(Scene& t, Random& tChance) { t.pWindow->cmbTargetDetail.SetListIndex(tChance.Whole(0, 4)); }
void Track(Scene& t, Random& tChance) { t.pWindow->chkTargetTrack.setChecked(tChance.Percent(50)); }
void ChooseTarget(Scene& t, Random& tChance) {
    const int iCount = t.pWindow->cmbTargetTarget.Items.Count();
    if (iCount == 0) return;
    const auto lNumber = t.pWindow->cmbTargetTarget.Items.At(tChance.Whole(0, iCount - 1)).lNumber;
    t.pWindow->cmbTargetTarget.SetText(std::to_string(lNumber));
}
void ClickTable(Scene& t, Random& tChance) {
    t.pWindow->SSTab.SetTab(ui::TabTargets);
    t.TakeOver();
    t.pWindow->grdTargetData.Click(static_cast<float>(tChance.Whole(0, 900)),
                                   static_cast<float>(tChance.Whole(0, 500)));
    if (tChance.Percent(30)) t.pWindow->grdTargetData.DblClick();
}
void MoveMouse(Scene& t, Random& tChance) {
    t.pWindow->grdTargetData.MouseMove(static_cast<float>(tChance.Whole(0, 900)),
                                       static_cast<float>(tChance.Whole(0, 500)));
}
void ShowPower(Scene& t, Random& tChance) { t.pWindow->chkRxNasaPower.setChecked(tChance.Percent(50)); }
void Resize(Scene& t, Random& tChance) {
    t.pWindow->resize(tChance.Whole(600, 1600), tChance.Whole(400, 1000));
    t.TakeOver();
}
void CommandReceiver(Scene& t, Random& tChance) {
    t.pWindow->txtRxNasaInterval.SetText(std::to_string(tChance.Whole(0, LastReceiverInterval)));
    t.pWindow->cmdRxNasaInterval.click();
}
void PressRecord(Scene& t, Random&) {
    if (!t.tSetting.bUnattended) t.PressRecord();
}
void ReadLog(Scene& t, Random&) { t.pWindow->Lines(t.pWindow->lstAisData); }

constexpr Action Actions[] = {
    {"turns a tab", TurnTab},
    {"sorts", Sort},
    {"chooses a detail", ShowDetail},
    {"tracks", Track},
    {"chooses a target", ChooseTarget},
    {"clicks into the table", ClickTable},
    {"moves the mouse", MoveMouse},
    {"chooses dBm", ShowPower},
    {"resizes", Resize},
    {"commands the receiver", CommandReceiver},
    {"presses Record", PressRecord},
    {"reads a log", ReadLog},
};

}  // namespace

void Hand::Second(Scene& t) {
    if (m_tChance.Unit() >= PerSecond) return;
    const Action& tAction = Actions[m_tChance.Whole(0, static_cast<int>(std::size(Actions)) - 1)];
    m_sLatest = tAction.sName;
    tAction.Do(t, m_tChance);
    t.Look();
}

}  // namespace simulation

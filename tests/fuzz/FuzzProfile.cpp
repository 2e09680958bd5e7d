// Fuzz target for the settings profile: any bytes as its file, loaded into the window and saved by it. What is saved is
// loaded as the same, what is not the program's own stays, and a second save changes nothing.
#include "platform/runtime/Profile.h"
#include "platform/toolkit/FileText.h"
#include "tests/fuzz/WindowHarness.h"

namespace {

using fuzz::Promise;
using runtime::Profile;
using support::TestWindow;

// What was not written stays as it was, what was written is read again.
void Text(const std::u16string& sText) {
    Profile t(sText);
    Promise(t.Text() == sText);
    t.Write("Nmea Data", "Settings #0", u"38400,n,8,1");
    Promise(t.Read("nmea data", "SETTINGS #0") == u"38400,n,8,1");
    const Profile tAgain(t.Text());
    Promise(tAgain.Read("Nmea Data", "Settings #0") == u"38400,n,8,1");
    Promise(tAgain.Text() == t.Text());
}

struct Control {
    const char* sSection;
    const char* sKey;
};
constexpr Control Texts[] = {{"Nmea Data", "Comm Port #0"}, {"Nmea Data", "Settings #0"}, {"Nmea Data", "Comm Port #1"},
                             {"Nmea Data", "Settings #1"},  {"Gps Data", "Latitude"},     {"Gps Data", "Longitude"},
                             {"Target Data", "Target"},     {"Output Data", "Comm Port"}, {"Output Data", "Settings"}};

QStringList State(TestWindow& t) {
    QStringList s;
    for (auto* p : {&t.chkCommEnabled(0), &t.chkCommEnabled(1), &t.chkRxNasaPower, &t.chkOutputEnabled}) {
        s << QString::number(p->isChecked() ? 1 : 0);
    }
    for (auto* p : {&t.txtCommSettings(0), &t.txtCommSettings(1), &t.txtOutputSettings}) s << p->text();
    for (auto* p : {&t.txtCommPort(0), &t.txtCommPort(1), &t.txtOutputPort}) s << p->text();
    for (const std::string& sText :
         {t.txtGpsLat.Text(), t.txtGpsLon.Text(), t.cmbTargetTarget.Text(), t.cmbTargetDetail.Text()}) {
        s << toolkit::FromLatin1(sText);
    }
    return s << QStringLiteral("%1 %2").arg(t.width()).arg(t.height());
}

void Load(TestWindow& t, const std::string& sBytes) {
    t.m_tProfile = toolkit::FromFileBytes(sBytes);
    t.ProfileLoad();
}

// By the window: the file is left as sBytes and then as what the save makes of it.
std::string Save(TestWindow& t, const std::string& sBytes) {
    support::World& tWorld = t.TheWorld();
    tWorld.WriteFile(tWorld.ProfileFile(), sBytes);
    t.ProfileSave();
    return tWorld.ReadFile(tWorld.ProfileFile());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize) {
    static fuzz::Window& tWindow = fuzz::Window::Make();
    static const std::string sDesigned = Save(tWindow.t, "");
    TestWindow& t = tWindow.t;
    const std::string sBytes(fuzz::Text(pData, iSize));
    Load(t, sDesigned);
    const fuzz::Cost tCost = fuzz::CostOf([&] {
        Text(toolkit::FromFileBytes(sBytes).sText.toStdU16String());
        Load(t, sBytes);
    });
    fuzz::PromiseLinear(tCost, iSize, {500000, 20000}, {2000, 4});
    const QStringList sLoaded = State(t);
    for (const QString& s : sLoaded) Promise(s.size() <= static_cast<qsizetype>(2 * Profile::LongestValue));
    const std::string sSaved = Save(t, sBytes);
    Load(t, sDesigned);
    Load(t, sSaved);
    const QString sDifference = support::Difference(sLoaded, State(t));
    if (!sDifference.isEmpty()) std::fprintf(stderr, "%s\n", qPrintable(sDifference));
    Promise(sDifference.isEmpty());
    Promise(Save(t, sSaved) == sSaved);
    return 0;
}

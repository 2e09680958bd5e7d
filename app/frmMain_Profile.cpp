// The settings profile: which value belongs to which control.
#include <QFile>
#include <charconv>
#include <cmath>

#include "app/frmMain.h"
#include "platform/runtime/Convert.h"
#include "platform/runtime/Profile.h"
#include "platform/toolkit/SafeFile.h"
#include "platform/toolkit/Twips.h"

namespace app {

namespace {

constexpr qint64 LongestProfile = 1 << 20;  // bytes; a profile has a few hundred
constexpr double LargestTwips = 16000 * toolkit::TwipsPerPixel;

// Runs tSet with the value when there is one; a value that does not convert leaves the control as it was.
template <class Set>
void Restore(const runtime::Profile& t, std::string_view sSection, std::string_view sKey, Set tSet) {
    const std::string sValue = t.Read(sSection, sKey);
    if (sValue.empty()) return;
    try {
        tSet(sValue);
    } catch (const runtime::ConversionError&) {
        return;
    }
}

auto IntoText(toolkit::TextBox& txt) {
    return [&txt](const std::string& sValue) { txt.SetText(sValue); };
}

// Only the two states that a box here can have.
auto IntoCheck(QCheckBox& chk) {
    return [&chk](const std::string& sValue) {
        const std::int32_t lState = runtime::ToInteger(sValue);
        if (lState == 0 || lState == 1) chk.setChecked(lState == 1);
    };
}

std::string CheckText(const QCheckBox& chk) { return chk.isChecked() ? "1" : "0"; }

// Twips as a single-precision number.
std::string TwipsText(int iPixels) {
    char sBuffer[32];
    const auto tResult =
        std::to_chars(sBuffer, sBuffer + sizeof sBuffer, static_cast<float>(toolkit::ToTwips(iPixels)));
    return {sBuffer, tResult.ptr};
}

int TwipsValue(const std::string& sValue) {
    const double dTwips = runtime::ToReal(sValue);
    if (std::abs(dTwips) > LargestTwips) throw runtime::ConversionError("Overflow");
    return toolkit::ToPixels(static_cast<double>(static_cast<float>(dTwips)));
}

std::string PortKey(std::string_view sKey, PortIndex i) { return std::string(sKey) + std::to_string(i); }

}  // namespace

void frmMain::ReadProfileText() {
    QFile tFile(QString::fromStdString(m_sProfileFile));
    m_sProfileText.clear();
    if (tFile.open(QIODevice::ReadOnly)) m_sProfileText = tFile.read(LongestProfile).toStdString();
}

void frmMain::ProfileLoad() {
    const runtime::Profile t(m_sProfileText);
    for (PortIndex i = 0; i < runtime::PortCount; ++i) {
        Restore(t, "Nmea Data", PortKey("Enabled #", i), IntoCheck(chkCommEnabled(i)));
        Restore(t, "Nmea Data", PortKey("Comm Port #", i), IntoText(txtCommPort(i)));
        Restore(t, "Nmea Data", PortKey("Settings #", i), IntoText(txtCommSettings(i)));
    }
    Restore(t, "Receiver Data", "Nasa Power", IntoCheck(chkRxNasaPower));
    Restore(t, "Gps Data", "Latitude", [this](const std::string& s) { txtGpsLat.SetText(s); });
    Restore(t, "Gps Data", "Longitude", [this](const std::string& s) { txtGpsLon.SetText(s); });
    Restore(t, "Target Data", "Detail", [this](const std::string& s) { cmbTargetDetail.SetText(s); });
    Restore(t, "Target Data", "Target", [this](const std::string& s) { cmbTargetTarget.SetText(s); });
    Restore(t, "Output Data", "Enabled", IntoCheck(chkOutputEnabled));
    Restore(t, "Output Data", "Comm Port", IntoText(txtOutputPort));
    Restore(t, "Output Data", "Settings", IntoText(txtOutputSettings));
    Restore(t, "Window Data", "Top", [this](const std::string& s) { move(x(), TwipsValue(s)); });
    Restore(t, "Window Data", "Left", [this](const std::string& s) { move(TwipsValue(s), y()); });
    Restore(t, "Window Data", "Height", [this](const std::string& s) { resize(width(), TwipsValue(s)); });
    Restore(t, "Window Data", "Width", [this](const std::string& s) { resize(TwipsValue(s), height()); });
}

void frmMain::ProfileSave() {
    ReadProfileText();  // keys that others have put there since are kept
    runtime::Profile t(m_sProfileText);
    for (PortIndex i = 0; i < runtime::PortCount; ++i) {
        t.Write("Nmea Data", PortKey("Enabled #", i), CheckText(chkCommEnabled(i)));
        t.Write("Nmea Data", PortKey("Comm Port #", i), txtCommPort(i).Text());
        t.Write("Nmea Data", PortKey("Settings #", i), txtCommSettings(i).Text());
    }
    t.Write("Receiver Data", "Nasa Power", CheckText(chkRxNasaPower));
    t.Write("Gps Data", "Latitude", txtGpsLat.Text());
    t.Write("Gps Data", "Longitude", txtGpsLon.Text());
    t.Write("Target Data", "Detail", cmbTargetDetail.Text());
    t.Write("Target Data", "Target", cmbTargetTarget.Text());
    t.Write("Output Data", "Enabled", CheckText(chkOutputEnabled));
    t.Write("Output Data", "Comm Port", txtOutputPort.Text());
    t.Write("Output Data", "Settings", txtOutputSettings.Text());
    // Only a normal window's place is kept: the screen's or an icon's size must never replace it.
    if (!isMinimized() && !isMaximized() && !isFullScreen()) {
        t.Write("Window Data", "Top", TwipsText(y()));
        t.Write("Window Data", "Left", TwipsText(x()));
        t.Write("Window Data", "Height", TwipsText(height()));
        t.Write("Window Data", "Width", TwipsText(width()));
    }
    m_sProfileText = t.Text();
    toolkit::ReplaceFile(QString::fromStdString(m_sProfileFile), m_sProfileText);  // a failed write is silent
}

}  // namespace app

// The settings profile: which value belongs to which control.
#include <QFileInfo>
#include <algorithm>
#include <charconv>
#include <cmath>

#include "app/ProfilePath.h"
#include "app/frmMain.h"
#include "platform/runtime/Convert.h"
#include "platform/runtime/Profile.h"
#include "platform/toolkit/SafeFile.h"
#include "platform/toolkit/Twips.h"

namespace app {

namespace {

constexpr double LargestTwips = 16000 * toolkit::TwipsPerPixel;

// Runs tSet with the value when there is one; a value that does not convert leaves the control as it was.
template <class Set>
void Restore(const runtime::Profile& t, std::string_view sSection, std::string_view sKey, Set tSet) {
    const QString sValue = QString::fromStdU16String(t.Read(sSection, sKey));
    if (sValue.isEmpty()) return;
    try {
        tSet(sValue);
    } catch (const runtime::ConversionError&) {
        return;
    }
}

auto IntoText(toolkit::TextBox& txt) {
    return [&txt](const QString& sValue) { txt.setText(sValue); };
}

// Only the two states that a box here can have.
auto IntoCheck(QCheckBox& chk) {
    return [&chk](const QString& sValue) {
        const std::int32_t lState = runtime::ToInteger(toolkit::ToLatin1(sValue));
        if (lState == 0 || lState == 1) chk.setChecked(lState == 1);
    };
}

QString CheckText(const QCheckBox& chk) { return QLatin1String(chk.isChecked() ? "1" : "0"); }

// Twips as a single-precision number.
QString TwipsText(int iPixels) {
    char sBuffer[32];
    const auto tResult =
        std::to_chars(sBuffer, sBuffer + sizeof sBuffer, static_cast<float>(toolkit::ToTwips(iPixels)));
    return QString::fromLatin1(sBuffer, tResult.ptr - sBuffer);
}

int TwipsValue(const QString& sValue) {
    const double dTwips = runtime::ToReal(toolkit::ToLatin1(sValue));
    if (std::abs(dTwips) > LargestTwips) throw runtime::ConversionError("Overflow");
    return toolkit::ToPixels(static_cast<double>(static_cast<float>(dTwips)));
}

std::string PortKey(std::string_view sKey, PortIndex i) { return std::string(sKey) + std::to_string(i); }

}  // namespace

// A profile that is there and cannot be read is not saved over either, though it can be by then.
void frmMain::ProfileOpen() {
    const ProfilePlace tPlace = ProfilePath(m_tPlatform.sProgramFile);
    m_sProfileFile = tPlace.sFile;
    m_sProfileAtFirst = tPlace.sAtFirst;
    const QFileInfo tInfo(m_sProfileFile);
    const QString sName =
        tInfo.exists() ? tInfo.canonicalFilePath()
                       : QFileInfo(tInfo.absolutePath()).canonicalFilePath() + QLatin1Char('/') + tInfo.fileName();
    if (m_tProfileHold.Take(toolkit::ToPath(sName).native())) {
        ShowError("Settings - another Tidewatch uses the same file");
    }
    try {
        m_tProfile = ReadProfile();
    } catch (const runtime::FileError& tError) {
        m_bProfileReadable = false;
        ShowError(std::string("Settings - ") + tError.what() + "; the file is left as it is");
    }
}

toolkit::FileText frmMain::ReadProfile() const {
    auto sBytes = runtime::TextFiles::ReadWhole(toolkit::ToPath(m_sProfileFile));
    if (!sBytes && !m_sProfileAtFirst.isEmpty()) {
        sBytes = runtime::TextFiles::ReadWhole(toolkit::ToPath(m_sProfileAtFirst));
    }
    return sBytes ? toolkit::FromFileBytes(*sBytes) : toolkit::FileText();
}

void frmMain::ProfileLoad() {
    const runtime::Profile t(m_tProfile.sText.toStdU16String());
    for (PortIndex i = 0; i < runtime::PortCount; ++i) {
        Restore(t, "Nmea Data", PortKey("Enabled #", i), IntoCheck(chkCommEnabled(i)));
        Restore(t, "Nmea Data", PortKey("Comm Port #", i), IntoText(txtCommPort(i)));
        Restore(t, "Nmea Data", PortKey("Settings #", i), IntoText(txtCommSettings(i)));
    }
    Restore(t, "Receiver Data", "Nasa Power", IntoCheck(chkRxNasaPower));
    Restore(t, "Gps Data", "Latitude", [this](const QString& s) { txtGpsLat.SetText(toolkit::ToLatin1(s)); });
    Restore(t, "Gps Data", "Longitude", [this](const QString& s) { txtGpsLon.SetText(toolkit::ToLatin1(s)); });
    Restore(t, "Target Data", "Detail", [this](const QString& s) { cmbTargetDetail.SetText(toolkit::ToLatin1(s)); });
    Restore(t, "Target Data", "Target", [this](const QString& s) { cmbTargetTarget.SetText(toolkit::ToLatin1(s)); });
    Restore(t, "Output Data", "Enabled", IntoCheck(chkOutputEnabled));
    Restore(t, "Output Data", "Comm Port", IntoText(txtOutputPort));
    Restore(t, "Output Data", "Settings", IntoText(txtOutputSettings));
    Restore(t, "Window Data", "Top", [this](const QString& s) { move(x(), TwipsValue(s)); });
    Restore(t, "Window Data", "Left", [this](const QString& s) { move(TwipsValue(s), y()); });
    Restore(t, "Window Data", "Height", [this](const QString& s) { resize(width(), TwipsValue(s)); });
    Restore(t, "Window Data", "Width", [this](const QString& s) { resize(TwipsValue(s), height()); });
}

std::vector<ProfileValue> frmMain::ProfileValues() {
    std::vector<ProfileValue> tValues;
    const auto Add = [&tValues](std::string_view sSection, std::string sKey, const QString& sValue) {
        tValues.push_back({sSection, std::move(sKey), sValue});
    };
    for (PortIndex i = 0; i < runtime::PortCount; ++i) {
        Add("Nmea Data", PortKey("Enabled #", i), CheckText(chkCommEnabled(i)));
        Add("Nmea Data", PortKey("Comm Port #", i), txtCommPort(i).text());
        Add("Nmea Data", PortKey("Settings #", i), txtCommSettings(i).text());
    }
    Add("Receiver Data", "Nasa Power", CheckText(chkRxNasaPower));
    Add("Gps Data", "Latitude", toolkit::FromLatin1(txtGpsLat.Text()));
    Add("Gps Data", "Longitude", toolkit::FromLatin1(txtGpsLon.Text()));
    Add("Target Data", "Detail", toolkit::FromLatin1(cmbTargetDetail.Text()));
    Add("Target Data", "Target", toolkit::FromLatin1(cmbTargetTarget.Text()));
    Add("Output Data", "Enabled", CheckText(chkOutputEnabled));
    Add("Output Data", "Comm Port", txtOutputPort.text());
    Add("Output Data", "Settings", txtOutputSettings.text());
    // Only a normal window's place is kept: the screen's or an icon's size must never replace it.
    if (!isMinimized() && !isMaximized() && !isFullScreen()) {
        const QRect tPlace = PlaceToKeep();
        Add("Window Data", "Top", TwipsText(tPlace.top()));
        Add("Window Data", "Left", TwipsText(tPlace.left()));
        Add("Window Data", "Height", TwipsText(tPlace.height()));
        Add("Window Data", "Width", TwipsText(tPlace.width()));
    }
    return tValues;
}

// Read again first: what others have put there since is kept. Theirs is also a value that they have changed while this
// window's is as it was loaded, as when a second window on the same profile was closed meanwhile.
void frmMain::ProfileSave() {
    if (!m_bProfileReadable) return;
    const toolkit::FolderLock tLock(m_sProfileFile);
    toolkit::FileText tFile;
    try {
        tFile = ReadProfile();
    } catch (const runtime::FileError&) {
        return;
    }
    const runtime::Profile tLoaded(m_tProfile.sText.toStdU16String());
    runtime::Profile t(tFile.sText.toStdU16String());
    for (const ProfileValue& tValue : ProfileValues()) {
        const bool bTheirs = t.Read(tValue.sSection, tValue.sKey) != tLoaded.Read(tValue.sSection, tValue.sKey);
        const bool bAsLoaded = std::ranges::find(m_tProfileValues, tValue) != m_tProfileValues.end();
        if (bTheirs && bAsLoaded) continue;
        t.Write(tValue.sSection, tValue.sKey, tValue.sValue.toStdU16String());
    }
    tFile.sText = QString::fromStdU16String(t.Text());
    m_tProfile = tFile;
    toolkit::ReplaceFile(m_sProfileFile, toolkit::ToFileBytes(m_tProfile));  // a failed write is silent
}

}  // namespace app

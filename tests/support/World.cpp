// The surroundings of a window under test.
#include "tests/support/World.h"

#include <QCoreApplication>
#include <QFile>
#include <memory>

#include "platform/toolkit/NativeSerialDevice.h"
#include "platform/toolkit/PortNames.h"
#include "tests/support/IsoTime.h"

namespace support {

namespace {

constexpr double SecondsOfDay = 86400;

}  // namespace

World::World() : dtNow(*FromIso("2011-05-15T12:00:00")) {}

void World::SetClock(std::string_view sIso) { dtNow = *FromIso(sIso); }

toolkit::Platform World::MakePlatform() {
    toolkit::Platform t;
    t.Now = [this] { return dtNow; };
    t.SecondsSinceMidnight = [this] {
        dTimer += dTimerStep;
        if (dTimer >= SecondsOfDay) dTimer -= SecondsOfDay;
        return dTimer;
    };
    t.Yield = [this] {
        if (tYield) {
            tYield();
        } else {
            QCoreApplication::processEvents();
        }
    };
    t.AskFile = [this](QWidget*, const toolkit::FileRequest& tRequest) -> std::optional<QString> {
        tDialogs.push_back(tRequest);
        if (tFileAnswers.empty()) {
            ++iUnanswered;
            return std::nullopt;
        }
        const auto sAnswer = tFileAnswers.front();
        tFileAnswers.pop_front();
        return sAnswer;
    };
    t.ShowMessage = [this](QWidget*, const QString& sText, toolkit::MessageIcon eIcon) {
        sMessages << sText;
        eMessageIcons.push_back(eIcon);
    };
    t.ShowBusyPointer = [this](bool bBusy) { bBusyPointer.push_back(bBusy); };
    t.Synchronize = tSynchronize;
    t.DiskRoom = [p = pRoom](const std::filesystem::path&) { return runtime::DiskRoom{p->lFree, p->lWhole}; };
    t.OpenDocument = [this](const QString& sFile) {
        sDocuments << sFile;
        return bOpensDocuments;
    };
    t.ScreenAreas = [this] { return tScreens; };
    t.Serial.Resolve = [](const QString& sPort) {
        if (const auto iNumber = toolkit::PortNumber(sPort); iNumber && *iNumber >= 1 && *iNumber <= 255) {
            return QStringLiteral("memory:%1").arg(*iNumber);
        }
        return toolkit::PortDevice(sPort);
    };
    t.Serial.MakeDevice = [this]() -> std::unique_ptr<toolkit::SerialDevice> {
        if (bNativeDevices) return std::make_unique<toolkit::NativeSerialDevice>();
        return std::make_unique<MemoryDevice>([this](const QString& sDevice) { OpenInMemory(sDevice); });
    };
    t.sProgramFile = Path(QStringLiteral("tidewatch"));
    if (tAdjust) tAdjust(t);
    return t;
}

void World::OpenInMemory(const QString& sDevice) const {
    const int iNumber = sDevice.section(QLatin1Char(':'), 1).toInt();
    const auto it = sBadPorts.find(iNumber);
    if (it != sBadPorts.end()) throw toolkit::CommError(it->second);
}

void World::WriteFile(const QString& sPath, std::string_view sContent) const {
    QFile tFile(sPath);
    if (!tFile.open(QIODevice::WriteOnly)) qFatal("cannot write %s", qPrintable(sPath));
    tFile.write(sContent.data(), static_cast<qint64>(sContent.size()));
}

std::string World::ReadFile(const QString& sPath) const {
    QFile tFile(sPath);
    if (!tFile.open(QIODevice::ReadOnly)) return {};
    return tFile.readAll().toStdString();
}

}  // namespace support

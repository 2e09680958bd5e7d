// Reads port fields and looks names up in the device folders. Everything is looked up at the moment of the call,
// because names come and go with the plugs.
#include "platform/toolkit/PortNames.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <algorithm>
#include <functional>
#include <string>
#include <tuple>
#include <utility>

#include "platform/runtime/Convert.h"
#include "platform/toolkit/DeviceHolder.h"

namespace toolkit {

namespace {
constexpr int NamesInAnError = 3;  // of an ambiguous beginning: more would not fit into the status bar

QString Quoted(const QString& sText) { return QLatin1Char('"') + sText + QLatin1Char('"'); }

// The digits of "COM6", empty for anything else.
QString ClassicNumber(const QString& sText) {
    static const QString sPrefix = QStringLiteral("COM");
    if (!sText.startsWith(sPrefix, Qt::CaseInsensitive)) return {};
    const QString sDigits = sText.mid(sPrefix.size());
    const auto IsDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    return std::all_of(sDigits.begin(), sDigits.end(), IsDigit) ? sDigits : QString();
}

// Whether the text is a number at all, and the number where 32 bits hold it.
struct NumberText {
    bool bNumber = false;
    std::optional<std::int32_t> lValue;
};

NumberText ReadNumber(const QString& sPort) {
    const QString sText = sPort.trimmed();
    const QString sClassic = ClassicNumber(sText);
    const std::string sNumber = ToLatin1(sClassic.isEmpty() ? sText : sClassic);
    try {
        runtime::ToReal(sNumber);
    } catch (const runtime::ConversionError&) {
        return {};
    }
    try {
        return {true, runtime::ToInteger(sNumber)};
    } catch (const runtime::ConversionError&) {
        return {true, std::nullopt};
    }
}

QString NumberedDevice(const NumberText& tNumber, const QString& sText, const PortFolders& tFolders) {
    const std::int32_t lNumber = tNumber.lValue.value_or(0);
    if (lNumber < LowestPortNumber || lNumber > HighestPortNumber)
        throw CommError(QStringLiteral("%1 is no port number from 1 to 255").arg(Quoted(sText)));
    return QStringLiteral("%1/ttyS%2").arg(tFolders.sDevices).arg(lNumber - 1);
}

QFileInfoList Links(const QString& sFolder) {
    return QDir(sFolder).entryInfoList(QDir::Files | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

// The one device whose links in this folder begin with sText; empty where none does. A whole name beats a beginning.
QString LinkedDevice(const QString& sText, const QString& sFolder) {
    QStringList sNames, sDevices;
    QString sPath;
    for (const QFileInfo& tLink : Links(sFolder)) {
        if (tLink.fileName() == sText) return tLink.absoluteFilePath();
        if (!tLink.fileName().startsWith(sText)) continue;
        const QString sDevice = tLink.canonicalFilePath();
        if (sDevice.isEmpty() || sDevices.contains(sDevice)) continue;  // dangling, or a second name of the same device
        if (sPath.isEmpty()) sPath = tLink.absoluteFilePath();
        sNames << tLink.fileName();
        sDevices << sDevice;
    }
    if (sNames.size() <= 1) return sPath;
    const QString sMore = sNames.size() > NamesInAnError ? QStringLiteral(" ...") : QString();
    throw CommError(QStringLiteral("%1 names more than one serial port: %2%3")
                        .arg(Quoted(sText), sNames.mid(0, NamesInAnError).join(QStringLiteral(", ")), sMore));
}

QString KernelName(const QString& sDevice, const PortFolders& tFolders) {
    const QString sFolder = tFolders.sDevices + QLatin1Char('/');
    return sDevice.startsWith(sFolder) ? sDevice.mid(sFolder.size()) : sDevice;
}

// The names in a folder of links that lead to a device.
QStringList LinkNames(const QString& sDevice, const QString& sFolder) {
    const QString sCanonical = QFileInfo(sDevice).canonicalFilePath();
    QStringList sNames;
    for (const QFileInfo& tLink : Links(sFolder))
        if (!sCanonical.isEmpty() && tLink.canonicalFilePath() == sCanonical) sNames << tLink.fileName();
    return sNames;
}

bool LeadsTo(const QString& sName, const QString& sDevice, const PortFolders& tFolders) {
    try {
        return QFileInfo(PortDevice(sName, tFolders)).canonicalFilePath() == QFileInfo(sDevice).canonicalFilePath();
    } catch (const CommError&) {
        return false;  // the beginning of several names
    }
}

// Where an offer stands in the list: ttyUSB2 before ttyUSB10.
struct OfferRank {
    int iKind;
    QString sName;  // without the number at its end
    int iNumber;
    friend bool operator<(const OfferRank& t1, const OfferRank& t2) {
        return std::tie(t1.iKind, t1.sName, t1.iNumber) < std::tie(t2.iKind, t2.sName, t2.iNumber);
    }
};

OfferRank KernelRank(const QString& sName, int iKind) {
    qsizetype iDigits = sName.size();
    while (iDigits > 0 && sName[iDigits - 1].isDigit()) --iDigits;
    const QString sStem = sName.left(iDigits);
    return {sStem == QLatin1String("ttyS") ? iKind + 1 : iKind, sStem, sName.mid(iDigits).toInt()};
}
}  // namespace

std::optional<std::int32_t> PortNumber(const QString& sPort) { return ReadNumber(sPort).lValue; }

QString PortDevice(const QString& sPort, const PortFolders& tFolders) {
    const QString sText = sPort.trimmed();
    if (sText.isEmpty()) throw CommError(QStringLiteral("no port is given"));
    if (const NumberText tNumber = ReadNumber(sText); tNumber.bNumber) return NumberedDevice(tNumber, sText, tFolders);
    const DeviceMissing tUnknown(QStringLiteral("%1 names no serial port").arg(Quoted(sText)));
    if (sText.contains(QChar::Null)) throw tUnknown;
    if (sText.startsWith(QLatin1Char('/'))) return sText;

    const QFileInfo tKernel(tFolders.sDevices + QLatin1Char('/') + sText);
    if (tKernel.exists() && !tKernel.isDir()) return tKernel.filePath();
    for (const QString& sFolder : tFolders.sLinks) {
        const QString sPath = LinkedDevice(sText, sFolder);
        if (!sPath.isEmpty()) return sPath;
    }
    throw tUnknown;
}

std::optional<QString> KeptPortName(const QString& sText, const PortFolders& tFolders) {
    if (sText.size() <= LongestPortName) return sText;
    const QString sPath = sText.trimmed();
    for (const QString& sFolder : tFolders.sLinks) {
        const QString sPrefix = sFolder + QLatin1Char('/');
        const QString sName = sPath.startsWith(sPrefix) ? sPath.mid(sPrefix.size()) : sPath;
        const bool bPath = sPath.size() > sName.size();
        if (bPath || QFileInfo(sPrefix + sName).isSymLink()) return sName.left(LongestPortName);
    }
    return std::nullopt;
}

std::vector<PluggedPort> PluggedPorts() {
    std::vector<PluggedPort> tPorts;
    QStringList sDevices;
    for (const QSerialPortInfo& tInfo : QSerialPortInfo::availablePorts()) {
        QStringList sWords{tInfo.manufacturer(), tInfo.description()};
        sWords.removeAll(QString());
        sWords.removeDuplicates();
        sDevices << tInfo.systemLocation();
        tPorts.push_back({tInfo.systemLocation(), sWords.join(QLatin1Char(' '))});
    }
    const auto sHolders = DeviceHolders(sDevices);
    for (PluggedPort& tPort : tPorts)
        if (const auto it = sHolders.find(tPort.sDevice); it != sHolders.end()) tPort.sHolder = it->second;
    return tPorts;
}

std::vector<PortOffer> OfferPorts(const std::vector<PluggedPort>& tPlugged, const PortFolders& tFolders) {
    std::vector<std::pair<OfferRank, PortOffer>> tRanked;
    for (const PluggedPort& tPort : tPlugged) {
        for (int iFolder = 0; iFolder < tFolders.sLinks.size(); ++iFolder) {
            for (const QString& sName : LinkNames(tPort.sDevice, tFolders.sLinks[iFolder])) {
                const QString sKept = sName.left(LongestPortName);
                if (LeadsTo(sKept, tPort.sDevice, tFolders))
                    tRanked.push_back({{iFolder, sName, 0}, {sKept, sName, tPort}});
            }
        }
        const QString sKernel = KernelName(tPort.sDevice, tFolders);
        tRanked.push_back({KernelRank(sKernel, static_cast<int>(tFolders.sLinks.size())), {sKernel, sKernel, tPort}});
    }
    std::ranges::stable_sort(tRanked, std::less<>{}, [](const auto& t) { return t.first; });
    std::vector<PortOffer> tOffers;
    for (auto& [tRank, tOffer] : tRanked) tOffers.push_back(std::move(tOffer));
    return tOffers;
}

}  // namespace toolkit

// What may stand in a port field: a port number, a path, a kernel name, or the beginning of a lasting name; its
// device path, and the list of what is plugged in to choose from.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/toolkit/SerialDevice.h"

namespace toolkit {

inline constexpr std::int32_t LowestPortNumber = 1;
inline constexpr std::int32_t HighestPortNumber = 255;
inline constexpr int LongestPortName = 79;  // characters of a port field that the profile keeps

// Where device names are looked up.
struct PortFolders {
    QString sDevices = QStringLiteral("/dev");
    // Folders of links whose names last when devices are plugged in in another order, best first.
    QStringList sLinks = {QStringLiteral("/dev/serial/by-id"), QStringLiteral("/dev/serial/by-path")};
};

// The number that a port field gives: "6", "6.0" (rounded half to even) or "COM6" in any case, blanks around dropped.
// Nothing for a name. Says nothing about whether such a port exists.
std::optional<std::int32_t> PortNumber(const QString& sPort);

// The device path of a port field's text. Number N is ttyS(N-1), as the first classic port is counted from 1; a text
// that begins with "/" is a path; else a kernel name ("ttyUSB0", "pts/3"), else the name of a link or its beginning, if
// only one device fits. Raises CommError for everything else; a number's or a path's device need not exist.
QString PortDevice(const QString& sPort, const PortFolders& tFolders = {});

// A text that a port field takes as it is, because the profile keeps it, or else, of the name of a link in one of the
// folders, what is kept of it: the name without its folder, and of a longer one its beginning, which is a port's name
// as well. Nothing for any other text that is too long.
std::optional<QString> KeptPortName(const QString& sText, const PortFolders& tFolders = {});

struct PluggedPort {
    QString sDevice;       // "/dev/ttyUSB0"
    QString sDescription;  // maker and product, may be empty
    QString sHolder{};     // the program that has it open, as DeviceHolder says it
};
// The serial ports that the system knows, with what their makers call them and who uses them. Takes a moment.
std::vector<PluggedPort> PluggedPorts();

struct PortOffer {
    QString sName;       // to be put into a port field; never longer than LongestPortName
    QString sWholeName;  // the same, but for a name that is too long to be kept
    PluggedPort tPort;   // where the name leads now
};
// All names of the given ports, best first: those that last when something else is plugged in (the folders, in their
// order), then kernel names, the classic ports' last of all, because a computer may list them without having them. A
// name whose kept beginning is another port's as well is left out.
std::vector<PortOffer> OfferPorts(const std::vector<PluggedPort>& tPlugged, const PortFolders& tFolders = {});

}  // namespace toolkit

// A window whose profile says what it does without a hand on it, and a folder for its recordings.
#pragma once

#include <QDir>
#include <string>
#include <vector>

#include "tests/support/TestWindow.h"

namespace support {

struct Unattended {
    // sKeys: lines of the section, "$F" stands for the folder. The input port is number 1.
    explicit Unattended(std::string sKeys, const char* sClock = "2011-05-15T12:00:00") {
        QDir().mkpath(sFolder);
        if (const auto iAt = sKeys.find("$F"); iAt != std::string::npos) sKeys.replace(iAt, 2, sFolder.toStdString());
        w.WriteFile(w.ProfileFile(), "[Nmea Data]\nComm Port #0=1\n[Unattended]\n" + sKeys);
        w.SetClock(sClock);
    }
    TestWindow& Begin() {
        t = std::make_unique<TestWindow>(w);
        t->LoadAndShow();
        t->UnattendedBegin();
        t->m_tFolderWork.Wait();
        return *t;
    }
    // Seconds pass; after each the folder has been looked after, if that was asked for.
    void Pass(int iSeconds) {
        for (int i = 0; i < iSeconds; ++i) {
            t->Advance(1);
            t->m_tFolderWork.Wait();
        }
    }
    // All that was recorded is on the disk: at the next second files that another one has followed are closed, and may
    // be removed then.
    void AwaitDisk() {
        for (std::int16_t iFile = 1; iFile < 10; ++iFile) t->m_tFiles.AwaitDisk(iFile);
    }
    std::vector<std::string> Files() const {
        std::vector<std::string> sNames;
        for (const QString& s : QDir(sFolder).entryList(QDir::Files, QDir::Name)) sNames.push_back(s.toStdString());
        return sNames;
    }
    std::string Content(const std::string& sName) const {
        return w.ReadFile(sFolder + QLatin1Char('/') + QString::fromStdString(sName));
    }
    std::vector<std::string> Log() { return t->Lines(t->lstCommData(0)); }

    World w;
    QString sFolder = w.Path(QStringLiteral("recordings"));
    std::unique_ptr<TestWindow> t;
};

}  // namespace support

// What each scenario does, what must hold then, and what is done next, when nothing fails any more.
#include "tests/failing/Scenarios.h"

#include <QCoreApplication>
#include <QFile>
#include <algorithm>

#include "tests/failing/Course.h"

namespace failing {

namespace {

const QString Profile = QStringLiteral("tidewatch.Ini");
const QString RecordFile = QStringLiteral("record.txt");
const QString Played = QStringLiteral("played.txt");
constexpr std::string_view Former = "06/14/2025 08:00:00 $GPGLL,former\r\n";
constexpr int PlayedLines = 3000;  // more than are read at once

bool Begins(const std::string& s, std::string_view sWith) { return s.starts_with(sWith); }

// What could be seen is kept, before the next action changes it.
void Seen(Stage& t) { TheCourse().Keep(t.Outcome()); }

// ---- The profile

bool HasLoaded(Stage& t) {
    return t.w().txtCommPort(1).text() == t.tInputs[1].Link() && t.w().txtCommSettings(1).Text() == "4800,n,8,1" &&
           t.w().chkOutputEnabled.isChecked();
}

bool IsWholeProfile(const std::string& s) {
    for (const char* sPart : {"; mine\r\n", "Mine=kept\r\n", "Enabled #0=", "Settings #1=", "Nasa Power=", "Longitude=",
                              "Target=", "[Output Data]\r\n", "Top=", "Width="}) {
        if (s.find(sPart) == std::string::npos) return false;
    }
    return s.ends_with("\r\n");
}

void ChangeSettings(Stage& t, const char* sTo) { t.w().txtCommSettings(0).SetText(sTo); }

void Load(Stage& t) {
    const std::string sOld = t.File(Profile);
    t.Act("load", [&] { t.Open(); });
    const bool bTold = Begins(t.Panel(2), "Settings - ");
    Require(bTold || HasLoaded(t), "the settings were not loaded, and nothing says so");
    Seen(t);
    ChangeSettings(t, "9600,n,8,1");
    t.Close();
    if (bTold) {
        RequireSame(t.File(Profile), sOld, "a profile that is to be left as it is");
    } else {
        Require(IsWholeProfile(t.File(Profile)), "the profile after loading and closing: " + t.File(Profile));
    }
    t.Open();
    Require(HasLoaded(t) && t.Panel(2).empty(), "the next start does not load the settings: " + t.Panel(2));
    const bool bKept = t.w().txtCommSettings(0).Text() == "9600,n,8,1";
    Require(bTold || bKept, "what was changed in a run that told of nothing is not there in the next");
}

void CheckProfile(Stage& t, const std::string& sOld) {
    const std::string sNow = t.File(Profile);
    if (sNow == sOld) return;
    Require(IsWholeProfile(sNow), "the profile is neither the old nor a whole new one: " + sNow);
    Require(sNow.find("Settings #0=9600,n,8,1\r\n") != std::string::npos, "a new profile with old values: " + sNow);
}

void SaveOnceMore(Stage& t) {
    t.Open();
    Require(HasLoaded(t), "the next start does not load the settings");
    ChangeSettings(t, "19200,n,8,1");
    t.Close();
    Require(t.File(Profile).find("Settings #0=19200,n,8,1\r\n") != std::string::npos, "the next save does not save");
}

void Save(Stage& t) {
    t.Open();
    const std::string sOld = t.File(Profile);
    ChangeSettings(t, "9600,n,8,1");
    t.Act("close", [&] { t.Close(); });
    CheckProfile(t, sOld);
    Require(t.Names(t.tWorld.Folder()) == std::vector{Profile.toStdString()}, "something is left beside the profile");
    Seen(t);
    SaveOnceMore(t);
}

// ---- Running

void StartScenario(Stage& t) {
    t.Open();
    t.Act("Start", [&] { t.Press("Start"); });
    if (t.Panel(1) == "Stopped") {
        const std::string sTold = t.Panel(2);
        Require(Begins(sTold, "Input Comm - ") || Begins(sTold, "Output Comm - "),
                "Start did not start, told: " + sTold);
        Require(sTold.size() > std::string_view("Output Comm - ").size(),
                "Start did not start, and no reason is given");
        for (app::PortIndex i = 0; i < 2; ++i) Require(!t.w().MSComm(i).PortOpen(), "stopped, and a port is open");
        Seen(t);
        t.Start();
    } else {
        Require(t.Panel(1) == "Running", "Start leaves " + t.Panel(1));
        Seen(t);
    }
    t.CheckRuns();
    t.Press("Stop");
    t.ForgetSaid();
    t.Start();
    t.CheckRuns();
}

void Run(Stage& t) {
    t.Open();
    t.Start();
    t.Act("lines", [&] {
        t.Hear(4, 0);
        t.Hear(2, 1);
        t.Tick();
    });
    t.Act("receiver command", [&] { t.w().cmdRxNasaChannel.click(); });
    const std::string sTold = t.Panel(2);
    const std::string sCommand = support::TestWindow::WithChecksum("$PNMLC,S") + "\r\n";
    if (!Begins(sTold, "Receiver - ")) RequireSame(t.tInputs[0].ReadAtLeast(sCommand.size()), sCommand, "the command");
    t.tInputs[0].Read();
    for (app::PortIndex i = 0; i < 2; ++i) {
        if (!t.w().MSComm(i).Away()) continue;
        Require(t.Notices("Event 2001") > 0, "a device counts as gone, and nothing was told");
    }
    if (!t.w().MSCommOutput.Away()) t.CheckForwarded();
    t.TryDevices();
    for (app::PortIndex i = 0; i < 2; ++i) Require(!t.w().MSComm(i).Away(), "a device is not opened again");
    Seen(t);
    t.Press("Stop");
    t.ForgetSaid();
    t.Start();
    t.tOutput.Read();
    t.CheckRuns();
}

void Stop(Stage& t) {
    t.Open();
    t.Start();
    t.tWorld.tFileAnswers = {t.tWorld.Path(RecordFile)};
    t.Press("Record");
    t.Hear(3);
    t.Tick();
    t.Hear(2);
    t.Act("Stop", [&] { t.StopRecording(); });
    Require(t.Panel(1) == "Stopped", "Stop leaves " + t.Panel(1));
    for (app::PortIndex i = 0; i < 2; ++i) Require(!t.w().MSComm(i).PortOpen(), "stopped, and a port is open");
    t.CheckRecordings(t.tWorld.Folder());
    t.tOutput.Read();
    Seen(t);
    t.ForgetSaid();
    t.Start();
    t.CheckRuns();
}

// ---- Recording

void RecordOnceMore(Stage& t) {
    t.ForgetSaid();
    if (!t.Running()) t.Start();
    t.tWorld.tFileAnswers = {t.tWorld.Path(QStringLiteral("once-more.txt"))};
    t.Press("Record");
    Require(t.Panel(1) == "Record", "the next recording does not begin: " + t.Panel(2));
    t.Hear(3);
    t.Tick();
    t.Hear(1);
    t.StopRecording();
    t.CheckRecordings(t.tWorld.Folder(), {QStringLiteral("once-more.txt")});
    const std::string sText = t.File(QStringLiteral("once-more.txt"));
    Require(std::count(sText.begin(), sText.end(), '\n') == 4, "the next recording lacks lines: " + sText);
}

void Record(Stage& t) {
    t.Open();
    t.Start();
    t.WriteFile(RecordFile, Former);
    t.tWorld.tFileAnswers = {t.tWorld.Path(RecordFile)};
    bool bBegan = false;
    t.Act("Record", [&] { t.Press("Record"); });
    bBegan = t.Panel(1) == "Record";
    if (!bBegan) {
        Require(t.RecordTold() > 0, "no recording began, and nothing was told");
        RequireSame(t.File(RecordFile), std::string(Former),
                    "a file that was to be replaced by a recording that never began");
    }
    t.Act("lines", [&] {
        for (int i = 0; i < 3; ++i) {
            t.Hear(2, 0);
            t.Hear(1, 1);
            t.Tick();
        }
    });
    if (bBegan && t.Panel(1) != "Record") Require(t.RecordTold() > 0, "the recording ended, and nothing was told");
    t.Act("Stop", [&] { t.StopRecording(); });
    if (bBegan) t.CheckRecordings(t.tWorld.Folder());
    Seen(t);
    RecordOnceMore(t);
}

// More than waits to be written.
void RecordMuch(Stage& t) {
    t.Open();
    t.w().chkOutputEnabled.setChecked(false);  // which carries less
    t.Start();
    t.tWorld.tFileAnswers = {t.tWorld.Path(RecordFile)};
    t.Press("Record");
    t.Act("many lines", [&] {
        t.HearMany(5000);
        t.Tick();
    });
    t.Act("Stop", [&] { t.StopRecording(); });
    t.CheckRecordings(t.tWorld.Folder());
    Seen(t);
    RecordOnceMore(t);
}

void Capture(Stage& t) {
    t.Open();
    t.Start();
    t.tWorld.tFileAnswers = {t.tWorld.Path(RecordFile)};
    t.Act("Record", [&] { t.Press("Record"); });
    t.Act("lines", [&] {
        t.Hear(2);
        t.Tick();
        t.Hear(2, 1);
        t.Tick();
    });
    t.Act("Stop", [&] { t.StopRecording(); });
    t.CheckRecordings(t.tWorld.Folder());
    t.CheckCaptures(t.tWorld.Folder());
    Seen(t);
    RecordOnceMore(t);
}

// Into a folder with a file that is too old, beyond a change of file.
void Unattended(Stage& t) {
    t.WriteFile(QStringLiteral("recordings/tidewatch-20110401-080000.txt"), "04/01/2011 08:00:00 $GPGLL,old\r\n");
    t.WriteFile(QStringLiteral("recordings/mine.txt"), "mine\r\n");
    t.Open();
    t.Act("begin", [&] {
        t.w().UnattendedBegin();
        t.w().m_tFolderWork.Wait();
        t.Tick();
    });
    const auto Lines = [&] {
        t.Hear(1);
        t.Tick();
        t.Hear(2);
        t.Hear(1, 1);
        t.Tick();
    };
    t.Act("first file", Lines);
    t.tWorld.SetClock("2011-05-15T13:00:00");
    t.Act("second file", Lines);
    t.Act("a minute", [&] { t.Tick(61); });
    // Whatever has failed: by now nothing does, and it goes on by itself.
    t.TryDevices();
    t.Tick(121);
    Require(t.Panel(1) == "Record", "nothing is recorded any more: " + t.Panel(1) + ", " + t.Panel(2));
    Lines();
    Require(!QFile::exists(t.Folder() + QStringLiteral("/tidewatch-20110401-080000.txt")),
            "the old file is not removed");
    t.StopRecording();
    RequireSame(t.tWorld.ReadFile(t.Folder() + QStringLiteral("/mine.txt")), "mine\r\n", "a foreign file");
    t.CheckRecordings(t.Folder(), {QStringLiteral("tidewatch-*.txt")});
    Require(t.AreRecorded(4), "the last lines are not recorded");
    t.CheckCaptures(t.Folder());
    Seen(t);
}

void DisplayEnd(Stage& t) {
    t.Open();
    t.Start();
    const std::string sOld = t.File(Profile);
    ChangeSettings(t, "9600,n,8,1");
    t.tWorld.tFileAnswers = {t.tWorld.Path(RecordFile)};
    t.Press("Record");
    t.Hear(3);
    t.Tick();
    t.Hear(2);
    t.Act("display's end", [&] { t.w().DisplayLost(); });
    t.CheckRecordings(t.tWorld.Folder());
    CheckProfile(t, sOld);
    t.Close();
    SaveOnceMore(t);
}

// ---- Playing

void WritePlayed(Stage& t) {
    std::string s;
    for (int i = 0; i < PlayedLines; ++i) {
        s += i < PlayedLines / 2 ? "05/15/2011 08:00:00 " : "05/15/2011 08:00:01 ";
        s += "!AIVDM,1,1,,A,15M67F@uQqG?w<hK?Mu8iFv00000,0*7B\r\n";
    }
    t.WriteFile(Played, s);
}

// Every line before the one that is told of has been played, and none behind.
void CheckPlayed(Stage& t, const char* sGood) {
    const std::string sTold = t.Panel(2);
    const auto lPlayed = t.w().m_lMessageNumber;
    if (Begins(sTold, "line ")) {
        Require(lPlayed == std::stoi(sTold.substr(5)) - 1, "played " + std::to_string(lPlayed) + ", told: " + sTold);
    } else {
        Require(lPlayed == PlayedLines, "played " + std::to_string(lPlayed) + ", and nothing was told: " + sTold);
        RequireSame(t.Panel(1), sGood, "the state after playing");
    }
}

void Play(Stage& t, const char* sKey) {
    t.tWorld.tFileAnswers = {t.tWorld.Path(Played)};
    t.Press(sKey);
}

void Playback(Stage& t) {
    WritePlayed(t);
    t.Open();
    t.Act("Playback", [&] { Play(t, "Playback"); });
    t.Act("lines", [&] { t.Tick(4); });
    if (!Begins(t.Panel(2), "Playback - ")) CheckPlayed(t, "Done");
    Seen(t);
    Play(t, "Playback");
    t.Tick(4);
    CheckPlayed(t, "Done");
    Require(t.w().m_lMessageNumber == PlayedLines, "the next playback does not play");
    t.tOutput.Read();
    t.Start();
}

void Burst(Stage& t) {
    WritePlayed(t);
    t.Open();
    t.w().chkOutputEnabled.setChecked(false);
    t.Act("burst", [&] { Play(t, "Playback Burst"); });
    if (!Begins(t.Panel(2), "Playback - ")) CheckPlayed(t, "Playback");
    Seen(t);
    Play(t, "Playback Burst");
    CheckPlayed(t, "Playback");
    Require(t.w().m_lMessageNumber == PlayedLines, "the next burst does not play");
    Play(t, "Playback Burst");  // the file before is still open, and is read no more
    CheckPlayed(t, "Playback");
    t.Start();
}

// ---- Devices that go and come, and tables

void Replug(Stage& t) {
    t.Open();
    t.Start();
    t.tWorld.tFileAnswers = {t.tWorld.Path(RecordFile)};
    t.Press("Record");
    t.Hear(2);
    t.Tick();
    t.Act("plug pulled", [&] {
        t.Unplug(0);
        while (!t.w().MSComm(0).Away()) QCoreApplication::processEvents();
        t.Hear(2, 1);
        t.Tick();
    });
    Require(t.Notices("Event 2001") > 0, "the plug was pulled, and event 2001 was not told");
    t.Act("plug put in", [&] {
        t.PlugIn(0);
        for (int i = 0; i < 4 && t.w().MSComm(0).Away(); ++i) t.w().MSComm(0).Retry();
    });
    if (t.w().MSComm(0).Away()) {
        Require(t.Notices("Device not opened - ") > 0, "the device is back, cannot be opened, and nothing was told");
        t.w().MSComm(0).Retry();
        Require(!t.w().MSComm(0).Away(), "the device is not opened when it can be again");
    }
    Require(t.Notices("Event 2002") > 0, "the device is open again, and event 2002 was not told");
    t.Hear(2);
    t.Tick();
    t.StopRecording();
    t.CheckRecordings(t.tWorld.Folder());
    t.tOutput.Read();
    Seen(t);
    t.ForgetSaid();
    t.Start();
    t.CheckRuns();
}

void Table(Stage& t) {
    const QString sFile = QStringLiteral("table.csv");
    t.Open();
    t.WriteFile(sFile, "former\r\n");
    const auto SaveTable = [&] {
        t.tWorld.tFileAnswers = {t.tWorld.Path(sFile)};
        t.w().TableSave(t.w().grdSpecData, sFile);
    };
    t.Act("save", SaveTable);
    if (t.File(sFile) == "former\r\n") {
        Require(Begins(t.Panel(2), "Save - ") && t.Panel(2).size() > 7, "a table was not saved, told: " + t.Panel(2));
    }
    const std::string sSaved = t.File(sFile);
    Require(t.Names(t.tWorld.Folder()).size() == 2, "something is left beside the table");
    Seen(t);
    SaveTable();
    Require(t.File(sFile).ends_with("\"18,19,24\"\r\n"), "the next save does not save: " + t.Panel(2) + t.File(sFile));
    Require(sSaved == "former\r\n" || sSaved == t.File(sFile), "neither the former nor the whole new table: " + sSaved);
}

}  // namespace

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> tScenarios = {
        {"load", "", Load},
        {"save", "", Save},
        {"start", "", StartScenario},
        {"run", "", Run},
        {"record", "", Record},
        {"record-much", "", RecordMuch},
        {"capture", "Capture=1\r\n", Capture},
        {"unattended", "Start=1\r\nRecord=$F\r\nRotate=hourly\r\nKeep days=20\r\nCapture=1\r\n", Unattended},
        {"stop", "", Stop},
        {"display-end", "", DisplayEnd},
        {"playback", "", Playback},
        {"burst", "", Burst},
        {"replug", "", Replug},
        {"table", "", Table},
    };
    return tScenarios;
}

}  // namespace failing

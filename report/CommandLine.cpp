// Options by CLI11: a subcommand for each row of the table of commands.
#include "report/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>
#include <string_view>

namespace report {

namespace {

constexpr const char* Version = "tidewatch-report " TIDEWATCH_VERSION;
constexpr const char* Description =
    "What recordings of Tidewatch say about the receiver and its antenna.\n"
    "Without a command: summary. FILE is a record file, plain, .gz or .zst, or - for standard input; several are read "
    "as one sequence in order of time.";
constexpr const char* Footer =
    "Exit codes: 0 done; 1 something could not be read or said; 2 wrong use.\n"
    "tidewatch-report COMMAND --help tells a command's options.";

// What the options of all commands are read into.
struct Words {
    std::vector<std::string> sFiles;
    std::string sBy, sPosition, sPage, sPngFolder, sSvgFolder, sQuiet = "10m", sStopped;
    Options tNumbers;  // of these the numbers alone
    bool bCsv = false, bJson = false, bRaw = false;
};

// The usage line, which CLI11 would give in another order.
class Help : public CLI::Formatter {
public:
    std::string make_usage(const CLI::App* pApp, std::string) const override {
        const std::string sCommand = pApp->get_parent() ? pApp->get_name() : "[COMMAND]";
        return "Usage: tidewatch-report " + sCommand + " [OPTIONS] " + (sCommand == "compare" ? "A B" : "FILE...") +
               "\n";
    }
};

std::string CheckSector(const std::string& s) {
    int i = 0;
    if (CLI::detail::lexical_cast(s, i) && i >= 1 && i <= 180 && 360 % i == 0) return {};
    return "--sector takes whole degrees from 1 to 180 that divide 360, not " + s;
}

std::string CheckPosition(const std::string& s) {
    if (nav::ReadPosition(s)) return {};
    return "--position takes a latitude and a longitude such as \"50 21.40 N 004 08.60 W\", not \"" + s + "\"";
}

std::string CheckDuration(const std::string& s) {
    if (ReadDuration(s)) return {};
    return "a time is a number and s, m, h or d, such as 10m, not \"" + s + "\"";
}

// 50 and 50% alike.
std::string DropPercent(std::string& s) {
    if (s.ends_with('%')) s.pop_back();
    return {};
}

void CheckFiles(const std::string& sCommand, std::size_t lFiles) {
    if (sCommand != "compare" || lFiles == 2) return;
    throw CLI::ValidationError(sCommand, "takes two recordings, not " + std::to_string(lFiles) +
                                             "; the files of one recording can be joined: cat A1 A2 | tidewatch-report "
                                             "compare - B");
}

void AddWatchOptions(CLI::App& tApp, Words& tWords) {
    tApp.add_option("--quiet", tWords.sQuiet, "No AIS message for so long, though the file grows; 10m unless told")
        ->check(CLI::Validator(CheckDuration, ""));
    tApp.add_option("--stopped", tWords.sStopped, "The file has not grown for so long; as --quiet unless told")
        ->check(CLI::Validator(CheckDuration, ""));
    tApp.add_option("--below", tWords.tNumbers.tWatch.iBelow,
                    "An hour has less than so many percent of its usual messages")
        ->transform(CLI::Validator(DropPercent, ""))
        ->check(CLI::Range(1, 100));
    tApp.add_option("--days", tWords.tNumbers.tWatch.iDays,
                    "Days from which on the median of the same hour is the usual, 3 unless told")
        ->check(CLI::Range(1, WatchRules::LongestMemory));
    tApp.add_option("--run", tWords.tNumbers.sRun, "Run this by the shell at each event, in place of a line");
}

void AddOptions(CLI::App& tApp, const Command& t, Words& tWords) {
    tApp.add_option("FILE", tWords.sFiles, "Record files, or - for standard input")->required();
    auto* pCsv = tApp.add_flag("--csv", tWords.bCsv, "Write CSV: one table, notes on standard error");
    tApp.add_flag("--json", tWords.bJson, "Write JSON")->excludes(pCsv);
    if (t.iTakes & TakesWatch) return AddWatchOptions(tApp, tWords);
    tApp.add_option("--html", tWords.sPage, "Write a page with tables and pictures to this file too")->excludes(pCsv);
    if (t.iTakes & TakesPictures) {
        tApp.add_option("--png", tWords.sPngFolder, "Write the pictures to this folder too, as PNG");
        tApp.add_option("--svg", tWords.sSvgFolder, "Write the pictures to this folder too, as SVG");
    }
    if (t.iTakes & TakesBy) {
        tApp.add_option("--by", tWords.sBy, "Divide by hour, day or week (from Monday)")
            ->check(CLI::IsMember({"hour", "day", "week"}));
    }
    if (t.iTakes & TakesPosition) {
        tApp.add_option("--position", tWords.sPosition, "Own position, in place of the files' GPS")
            ->check(CLI::Validator(CheckPosition, ""));
    }
    if (t.iTakes & TakesSector) {
        tApp.add_option("--sector", tWords.tNumbers.iSector, "Degrees of a sector, 10 unless told")
            ->check(CLI::Validator(CheckSector, ""));
    }
    if (t.iTakes & TakesGap) {
        tApp.add_option("--gap", tWords.tNumbers.iGap,
                        "Intervals without a report above which a ship is out of reach, 30 unless told")
            ->check(CLI::Range(2, 10000));
        tApp.add_option("--ring", tWords.tNumbers.iRing, "Nautical miles of a ring, 5 unless told")
            ->check(CLI::Range(1, 1000));
        tApp.add_option("--share", tWords.tNumbers.iShare, "Percent heard within the reliable range, 80 unless told")
            ->check(CLI::Range(1, 100));
    }
    if (t.iTakes & TakesRaw) tApp.add_flag("--raw", tWords.bRaw, "Levels in the board's own numbers, not in dBm");
}

Options OptionsOf(const Words& t) {
    Options tOptions = t.tNumbers;
    tOptions.sFiles = t.sFiles;
    tOptions.eFormat = t.bCsv ? Format::Csv : t.bJson ? Format::Json : Format::Text;
    if (!t.sPosition.empty()) tOptions.tPosition = nav::ReadPosition(t.sPosition);
    tOptions.eBy = ReadPeriod(t.sBy);
    tOptions.sPage = t.sPage;
    tOptions.sPngFolder = t.sPngFolder;
    tOptions.sSvgFolder = t.sSvgFolder;
    tOptions.bRaw = t.bRaw;
    tOptions.tWatch.dQuiet = static_cast<double>(ReadDuration(t.sQuiet).value_or(0));
    tOptions.tWatch.dStopped =
        static_cast<double>(ReadDuration(t.sStopped.empty() ? t.sQuiet : t.sStopped).value_or(0));
    return tOptions;
}

// The command's place among the words may be left out.
std::vector<std::string> WithCommand(int iCount, const char* const* sWords) {
    std::vector<std::string> s(sWords + std::min(iCount, 1), sWords + iCount);
    const auto Names = [&](const Command& t) { return !s.empty() && s[0] == t.sName; };
    const bool bOwn = s.empty() || s[0] == "--help" || s[0] == "-h" || s[0] == "--version";
    if (!bOwn && std::ranges::none_of(Commands(), Names)) s.insert(s.begin(), Commands().front().sName);
    std::ranges::reverse(s);  // as CLI11 wants them
    return s;
}

}  // namespace

std::optional<Asked> ReadCommandLine(int iCount, const char* const* sWords, std::string& sText, int& iExit) {
    CLI::App tApp(Description, "tidewatch-report");
    tApp.formatter(std::make_shared<Help>());
    tApp.footer(Footer);
    tApp.set_version_flag("--version", Version);
    tApp.require_subcommand(1);
    Words tWords;
    for (const Command& t : Commands()) AddOptions(*tApp.add_subcommand(t.sName, t.sHelp), t, tWords);
    try {
        tApp.parse(WithCommand(iCount, sWords));
        if (std::ranges::count(tWords.sFiles, "-") > 1) throw CLI::ValidationError("-", "can be read only once");
        const bool bWatch = tApp.get_subcommands().front()->get_name() == "watch";
        if (bWatch && tWords.sFiles.back() == "-") throw CLI::ValidationError("watch", "needs a file to follow, not -");
        CheckFiles(tApp.get_subcommands().front()->get_name(), tWords.sFiles.size());
    } catch (const CLI::ParseError& tError) {
        std::ostringstream tOut, tErr;
        const bool bMistake = tApp.exit(tError, tOut, tErr) != 0;
        iExit = bMistake ? ExitUsage : ExitGood;
        sText = bMistake ? "tidewatch-report: " + tErr.str() : tOut.str();
        return std::nullopt;
    }
    const std::string sName = tApp.get_subcommands().front()->get_name();
    const auto pCommand = std::ranges::find(Commands(), sName, [](const Command& t) { return std::string(t.sName); });
    return Asked{&*pCommand, OptionsOf(tWords)};
}

}  // namespace report

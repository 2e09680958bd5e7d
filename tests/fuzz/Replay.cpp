// Takes the fuzzer's place where there is none: runs a target over the files of a corpus and then over changed copies
// of them, the same in every run. A failing input is left in the working folder.
//
//     FuzzX FOLDER... [-runs=N] [-seed=S]      N changed copies, 0 where it is not said; S is 1
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/fuzz/Harness.h"

extern "C" {
std::uint64_t FuzzSteps() { return 0; }
// Of the address sanitizer, which ends the program without a signal; null where it is not built in.
__attribute__((weak)) void __sanitizer_set_death_callback(void (*pCallback)());
}

namespace {

const std::string* pInput = nullptr;

void KeepInput() {
    if (!pInput) return;
    std::ofstream("failed-input", std::ios::binary) << *pInput;
    std::cerr << "The input is kept: failed-input" << std::endl;
    pInput = nullptr;
}

void Failed(int iSignal) {
    KeepInput();
    std::signal(iSignal, SIG_DFL);
    std::raise(iSignal);
}

void Run(const std::string& sInput) {
    pInput = &sInput;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(sInput.data()), sInput.size());
    pInput = nullptr;
}

// splitmix64: small, quick, and the same everywhere.
class Dice {
public:
    explicit Dice(std::uint64_t lSeed) : m_lState(lSeed) {}
    std::uint64_t operator()() {
        std::uint64_t l = m_lState += 0x9E3779B97F4A7C15;
        l = (l ^ (l >> 30)) * 0xBF58476D1CE4E5B9;
        l = (l ^ (l >> 27)) * 0x94D049BB133111EB;
        return l ^ (l >> 31);
    }
    std::size_t Below(std::size_t iEnd) { return static_cast<std::size_t>((*this)() % iEnd); }

private:
    std::uint64_t m_lState;
};

using Corpus = std::vector<std::string>;

// One change: a character replaced, put in, taken out or doubled, a bit, a piece of another input, a shorter text.
void Change(Dice& tDice, const Corpus& sCorpus, std::string& s) {
    constexpr std::string_view Likely = ",,,..*!$09AZaw -+eE\r\n\t\"=[]'\xB0";
    const std::size_t iPlace = tDice.Below(s.size() + 1);
    const std::string& sOther = sCorpus[tDice.Below(sCorpus.size())];
    switch (tDice.Below(9)) {
        case 0:
            if (iPlace < s.size()) s[iPlace] = static_cast<char>(tDice());
            break;
        case 1:
            if (iPlace < s.size()) s[iPlace] = static_cast<char>(s[iPlace] ^ (1 << tDice.Below(8)));
            break;
        case 2:
            if (iPlace < s.size()) s[iPlace] = sOther.empty() ? '0' : sOther[tDice.Below(sOther.size())];
            break;
        case 3:
            s.insert(iPlace, 1, Likely[tDice.Below(Likely.size())]);
            break;
        case 4:
            s.erase(iPlace, 1 + tDice.Below(4));
            break;
        case 5:
            s.insert(iPlace, s, tDice.Below(s.size() + 1), 1 + tDice.Below(8));
            break;
        case 6:
            s.insert(iPlace, sOther, tDice.Below(sOther.size() + 1), 1 + tDice.Below(40));
            break;
        case 7:
            s.replace(iPlace, std::string::npos, sOther, std::min(iPlace, sOther.size()), std::string::npos);
            break;
        default:
            if (tDice.Below(8) == 0) s.resize(iPlace);
            break;
    }
}

Corpus ReadCorpus(const std::vector<std::string>& sFolders) {
    std::vector<std::filesystem::path> tFiles;
    for (const std::string& sFolder : sFolders) {
        for (const auto& t : std::filesystem::directory_iterator(sFolder)) tFiles.push_back(t.path());
    }
    std::sort(tFiles.begin(), tFiles.end());
    Corpus sCorpus;
    for (const auto& t : tFiles) {
        std::ifstream tFile(t, std::ios::binary);
        sCorpus.emplace_back(std::istreambuf_iterator<char>(tFile), std::istreambuf_iterator<char>());
    }
    return sCorpus;
}

}  // namespace

int main(int iArguments, char** sArguments) {
    std::uint64_t lRuns = 0;
    std::uint64_t lSeed = 1;
    std::vector<std::string> sFolders;
    for (const std::string& s : std::vector<std::string>(sArguments + 1, sArguments + iArguments)) {
        if (s.starts_with("-runs=")) {
            lRuns = std::stoull(s.substr(6));
        } else if (s.starts_with("-seed=")) {
            lSeed = std::stoull(s.substr(6));
        } else {
            sFolders.push_back(s);
        }
    }
    const Corpus sCorpus = ReadCorpus(sFolders);
    if (sCorpus.empty()) {
        std::cerr << "no corpus" << std::endl;
        return 2;
    }
    for (const int iSignal : {SIGABRT, SIGSEGV, SIGFPE, SIGBUS, SIGILL}) std::signal(iSignal, Failed);
    if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(KeepInput);

    for (const std::string& s : sCorpus) Run(s);
    Dice tDice(lSeed);
    std::string sInput;
    for (std::uint64_t i = 0; i < lRuns; ++i) {
        sInput = sCorpus[tDice.Below(sCorpus.size())];
        for (std::size_t iChanges = 1 + tDice.Below(4); iChanges > 0; --iChanges) Change(tDice, sCorpus, sInput);
        Run(sInput);
    }
    std::cout << sCorpus.size() << " inputs of the corpus, " << lRuns << " changed ones of seed " << lSeed << std::endl;
}

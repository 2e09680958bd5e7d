// What the window shows of each sentence that it is given, for a comparison with another decoder (OtherDecoder.py).
// Reads sentences, a line each; writes a line for each: the new lines of the AIS log, joined by "|", and, where they
// tell of a message, the cells of its row from MMSI to speed, each after a tab.
#include <QApplication>
#include <cstdio>
#include <iostream>

#include "targets/TargetColumns.h"
#include "tests/support/TestWindow.h"

namespace {

std::string Shown(support::TestWindow& tWindow, std::string_view sSentence) {
    tWindow.lstAisData.Lines.Clear();
    tWindow.FeedLine(0, sSentence);
    std::string sShown;
    for (const std::string& sLine : tWindow.Lines(tWindow.lstAisData)) {
        if (!sShown.empty()) sShown += '|';
        sShown += sLine;
    }
    if (!sShown.starts_with("Time=")) return sShown;
    const int iRow = tWindow.m_lMessageRow;
    for (int iCol = targets::ColMmsi; iCol <= targets::ColSpeed; ++iCol) {
        sShown += '\t';
        sShown += tWindow.Cell(tWindow.grdTargetData, iRow, iCol);
    }
    return sShown;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: ShownMessages GPS-SENTENCE, sentences on standard input\n", stderr);
        return 2;
    }
    const char* sGps = argv[1];
    const QApplication tApplication(argc, argv);
    support::World tWorld;
    support::TestWindow tWindow(tWorld);
    tWindow.Load();
    tWindow.StartBoth();
    tWindow.FeedLine(1, sGps);
    for (std::string sLine; std::getline(std::cin, sLine);) {
        const std::string sShown = Shown(tWindow, sLine);
        std::printf("%s\n", sShown.c_str());
    }
}

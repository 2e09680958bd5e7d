// Records like the program does and waits to be killed: five seconds of traffic that the wall clock has seen, a sixth
// that it has not. Writes "ready" when that far. Usage: RecordingChild FILE
#include <QApplication>
#include <cstdio>

#include "tests/support/TestWindow.h"
#include "tests/window/RecordingChild.h"

int main(int argc, char* argv[]) {
    QApplication tApplication(argc, argv);
    if (argc != 2) return 2;
    support::World tWorld;
    support::TestWindow t(tWorld);
    t.LoadAndShow();
    t.StartBoth();
    tWorld.tFileAnswers = {QString::fromLocal8Bit(argv[1])};
    t.Press("Record");
    for (int iSecond = 0; iSecond <= support::SecondsTicked; ++iSecond) {
        for (int i = 0; i < support::LinesPerSecond; ++i) t.FeedLine(0, support::RecordedSentence(iSecond, i));
        if (iSecond < support::SecondsTicked) t.Advance(1);
    }
    std::puts("ready");
    std::fflush(stdout);
    while (true) std::getchar();
}

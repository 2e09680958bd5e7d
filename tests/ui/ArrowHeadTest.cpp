// The strokes of the diagram's arrow heads.
#include "ui/ArrowHead.h"

#include <QTest>

using ui::Stroke;

class ArrowHeadTest : public QObject {
    Q_OBJECT
private slots:
    void TagSaysWhereTheHeadPoints_data();
    void TagSaysWhereTheHeadPoints();
    void HeadStandsAtTheLinesEndPoint();
    void HeadsNearTheOriginReachBelowZero();
};

namespace {
// At the point (1000, 500).
const Stroke RightLower{940, 530, 1000, 500}, RightUpper{940, 470, 1000, 500};
const Stroke DownLeft{970, 440, 1000, 500}, DownRight{1030, 440, 1000, 500};
}  // namespace

void ArrowHeadTest::TagSaysWhereTheHeadPoints_data() {
    QTest::addColumn<std::string>("sTag");
    QTest::addColumn<std::vector<Stroke>>("tExpected");
    using Strokes = std::vector<Stroke>;

    QTest::newRow("no tag") << std::string() << Strokes{};
    QTest::newRow("right") << std::string("Right") << Strokes{RightLower, RightUpper};
    QTest::newRow("bottom") << std::string("Bottom") << Strokes{DownLeft, DownRight};
    QTest::newRow("both, right first") << std::string("Right Bottom")
                                       << Strokes{RightLower, RightUpper, DownLeft, DownRight};
    QTest::newRow("both in the other order, right first all the same")
        << std::string("Bottom,Right") << Strokes{RightLower, RightUpper, DownLeft, DownRight};
    QTest::newRow("within other text") << std::string("ToTheRightSide") << Strokes{RightLower, RightUpper};
    QTest::newRow("lower case is no tag") << std::string("right bottom") << Strokes{};
    QTest::newRow("upper case is no tag") << std::string("RIGHT") << Strokes{};
    QTest::newRow("part of a word is no tag") << std::string("Righ Botto") << Strokes{};
    QTest::newRow("a word said twice gives one head") << std::string("RightRight") << Strokes{RightLower, RightUpper};
}

void ArrowHeadTest::TagSaysWhereTheHeadPoints() {
    QFETCH(std::string, sTag);
    QFETCH(std::vector<Stroke>, tExpected);
    QVERIFY(ui::ArrowHead(1000, 500, sTag) == tExpected);
}

void ArrowHeadTest::HeadStandsAtTheLinesEndPoint() {
    for (const Stroke& tStroke : ui::ArrowHead(3210, 1234, "Right Bottom")) {
        QCOMPARE(tStroke.lX2, 3210);
        QCOMPARE(tStroke.lY2, 1234);
    }
}

void ArrowHeadTest::HeadsNearTheOriginReachBelowZero() {
    QVERIFY((ui::ArrowHead(0, 0, "Right") == std::vector<Stroke>{{-60, 30, 0, 0}, {-60, -30, 0, 0}}));
}

QTEST_GUILESS_MAIN(ArrowHeadTest)
#include "ArrowHeadTest.moc"

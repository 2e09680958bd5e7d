// The timing planner's arithmetic: ticks, bands, percentages, summary and refusals.
#include "ui/TimingModel.h"

#include <QTest>

using ui::Primitive;

class TimingModelTest : public QObject {
    Q_OBJECT
private slots:
    void FixedChannelDrawsItsBarThenItsTicks();
    void ChannelsTakeTurns();
    void TickPlacesRoundHalfToEven_data();
    void TickPlacesRoundHalfToEven();
    void PercentageOfAFixedChannel_data();
    void PercentageOfAFixedChannel();
    void BandsAlternateFromChannelA();
    void PartialLastBandIsNotDrawn();
    void BandsComeBeforeTicks();
    void AlternatingReceiverHearsAndMisses_data();
    void AlternatingReceiverHearsAndMisses();
    void SummaryHasThreeLinesJoinedByCarriageReturns();
    void SummaryRoundsFractionalTimes();
    void TimesAddUpStepByStep();
    void GoodInputsAreRead_data();
    void GoodInputsAreRead();
    void BadInputsAreRefusedByName_data();
    void BadInputsAreRefusedByName();
    void LongestRunIsQuick();
};

namespace {
// 7200 units wide: 20 to the second at the default span of 360 seconds.
constexpr ui::TimingRow Row{1200, 8400, 240, 480};

std::vector<std::int32_t> Ticks(const ui::TimingDrawing& tDrawing) {
    std::vector<std::int32_t> lPlaces;
    for (const Primitive& t : tDrawing.tPrimitives)
        if (t.eKind == Primitive::Kind::Line) lPlaces.push_back(t.lX1);
    return lPlaces;
}

std::vector<Primitive> Rectangles(const ui::TimingDrawing& tDrawing) {
    std::vector<Primitive> tRectangles;
    for (const Primitive& t : tDrawing.tPrimitives)
        if (t.eKind == Primitive::Kind::Rectangle) tRectangles.push_back(t);
    return tRectangles;
}

// Where the times stand that a person has worked out.
std::vector<std::int32_t> Places(const std::vector<int>& iSeconds) {
    std::vector<std::int32_t> lPlaces;
    for (const int iTime : iSeconds) lPlaces.push_back(1200 + 20 * iTime);
    return lPlaces;
}
}  // namespace

void TimingModelTest::FixedChannelDrawsItsBarThenItsTicks() {
    const auto tDrawing = ui::TimingChannel(Row, {30, 36, 360}, 0, ui::ChannelAColour);
    const auto& t = tDrawing.tPrimitives;
    QCOMPARE(t.size(), std::size_t{7});
    QVERIFY((t[0] == Primitive{Primitive::Kind::Rectangle, 1200, 240, 8400, 480, {128, 255, 128}}));
    QVERIFY((t[1] == Primitive{Primitive::Kind::Line, 1200, 240, 1200, 480, {0, 0, 0}}));
    QVERIFY((t[6] == Primitive{Primitive::Kind::Line, 7200, 240, 7200, 480, {0, 0, 0}}));
    QCOMPARE(tDrawing.sPercentage, std::string("50%"));
}

void TimingModelTest::ChannelsTakeTurns() {
    const ui::TimingInputs tInputs{30, 36, 360};
    QCOMPARE(Ticks(ui::TimingChannel(Row, tInputs, 0, ui::ChannelAColour)), Places({0, 60, 120, 180, 240, 300}));
    const auto tChannelB = ui::TimingChannel(Row, tInputs, 30, ui::ChannelBColour);
    QCOMPARE(Ticks(tChannelB), Places({30, 90, 150, 210, 270, 330}));
    QVERIFY((tChannelB.tPrimitives[0].tColour == ui::Rgb{255, 128, 128}));
    QCOMPARE(tChannelB.sPercentage, std::string("50%"));
}

void TimingModelTest::TickPlacesRoundHalfToEven_data() {
    QTest::addColumn<int>("iWidth");
    QTest::addColumn<int>("iPlace");
    QTest::newRow("1.5 is 2") << 3 << 2;
    QTest::newRow("2.5 is 2") << 5 << 2;
    QTest::newRow("3.5 is 4") << 7 << 4;
}

void TimingModelTest::TickPlacesRoundHalfToEven() {
    QFETCH(int, iWidth);
    QFETCH(int, iPlace);
    const ui::TimingRow tRow{0, iWidth, 0, 10};
    QCOMPARE(Ticks(ui::TimingChannel(tRow, {1, 1, 2}, 1, ui::ChannelBColour)), std::vector<std::int32_t>{iPlace});
}

void TimingModelTest::PercentageOfAFixedChannel_data() {
    QTest::addColumn<double>("dRateTx");
    QTest::addColumn<double>("dOffset");
    QTest::addColumn<double>("dTimeSpan");
    QTest::addColumn<std::string>("sExpected");
    QTest::newRow("half of all") << 30.0 << 0.0 << 360.0 << std::string("50%");
    QTest::newRow("one of twelve has two digits") << 30.0 << 330.0 << 360.0 << std::string("08%");
    QTest::newRow("one of one") << 30.0 << 0.0 << 30.0 << std::string("100%");
    QTest::newRow("none of one") << 30.0 << 30.0 << 30.0 << std::string("00%");
    QTest::newRow("2 of 2.5, which counts as 2") << 30.0 << 0.0 << 75.0 << std::string("100%");
    QTest::newRow("2 of 3.5, which counts as 4") << 30.0 << 0.0 << 105.0 << std::string("50%");
    QTest::newRow("two thirds round up") << 30.0 << 0.0 << 90.0 << std::string("67%");
    QTest::newRow("one eighth rounds away from zero") << 10.0 << 70.0 << 80.0 << std::string("13%");
    QTest::newRow("one of 1.5, which counts as 2") << 20.0 << 0.0 << 30.0 << std::string("50%");
}

void TimingModelTest::PercentageOfAFixedChannel() {
    QFETCH(double, dRateTx);
    QFETCH(double, dOffset);
    QFETCH(double, dTimeSpan);
    QFETCH(std::string, sExpected);
    QCOMPARE(ui::TimingChannel(Row, {dRateTx, 36, dTimeSpan}, dOffset, ui::ChannelAColour).sPercentage, sExpected);
}

void TimingModelTest::BandsAlternateFromChannelA() {
    const auto tBands = Rectangles(ui::TimingAlternate(Row, {30, 36, 360}));
    QCOMPARE(tBands.size(), std::size_t{10});
    for (std::size_t i = 0; i < tBands.size(); ++i) {
        const auto lLeft = static_cast<std::int32_t>(1200 + 720 * i);
        const ui::Rgb tColour = i % 2 == 0 ? ui::Rgb{128, 255, 128} : ui::Rgb{255, 128, 128};
        QVERIFY((tBands[i] == Primitive{Primitive::Kind::Rectangle, lLeft, 240, lLeft + 720, 480, tColour}));
    }
}

void TimingModelTest::PartialLastBandIsNotDrawn() {
    const auto tBands = Rectangles(ui::TimingAlternate(Row, {30, 36, 350}));
    QCOMPARE(tBands.size(), std::size_t{9});
    QCOMPARE(tBands.back().lX2, 7865);  // 7200 * 324 / 350 + 1200 = 7865.14
    QVERIFY(Rectangles(ui::TimingAlternate(Row, {30, 400, 360})).empty());
}

void TimingModelTest::BandsComeBeforeTicks() {
    bool bTick = false;
    for (const Primitive& t : ui::TimingAlternate(Row, {30, 36, 360}).tPrimitives) {
        if (t.eKind == Primitive::Kind::Line) bTick = true;
        if (bTick) QVERIFY(t.eKind == Primitive::Kind::Line && (t.tColour == ui::Rgb{0, 0, 0}));
    }
    QVERIFY(bTick);
}

void TimingModelTest::AlternatingReceiverHearsAndMisses_data() {
    QTest::addColumn<double>("dRateTx");
    QTest::addColumn<double>("dRateRc");
    QTest::addColumn<double>("dTimeSpan");
    QTest::addColumn<std::vector<int>>("iHeard");
    QTest::addColumn<std::string>("sPercentage");
    QTest::addColumn<std::string>("sMinMax");
    using Times = std::vector<int>;

    QTest::newRow("the defaults") << 30.0 << 36.0 << 360.0 << Times{0, 210, 240, 270, 300, 330} << std::string("50%")
                                  << std::string("Min 30 sec, Max 210 sec");
    QTest::newRow("in step: everything is heard")
        << 30.0 << 30.0 << 360.0 << Times{0, 30, 60, 90, 120, 150, 180, 210, 240, 270, 300, 330} << std::string("100%")
        << std::string("Min 30 sec, Max 30 sec");
    QTest::newRow("half the pace") << 30.0 << 60.0 << 360.0 << Times{0, 90, 120, 210, 240, 330} << std::string("50%")
                                   << std::string("Min 30 sec, Max 90 sec");
    QTest::newRow("nothing after the first")
        << 180.0 << 400.0 << 360.0 << Times{0} << std::string("50%") << std::string("Min 360 sec, Max 0 sec");
    QTest::newRow("never changes the channel") << 60.0 << 1000.0 << 360.0 << Times{0, 120, 240} << std::string("50%")
                                               << std::string("Min 120 sec, Max 120 sec");
}

void TimingModelTest::AlternatingReceiverHearsAndMisses() {
    QFETCH(double, dRateTx);
    QFETCH(double, dRateRc);
    QFETCH(double, dTimeSpan);
    QFETCH(std::vector<int>, iHeard);
    QFETCH(std::string, sPercentage);
    QFETCH(std::string, sMinMax);
    const auto tDrawing = ui::TimingAlternate(Row, {dRateTx, dRateRc, dTimeSpan});
    QCOMPARE(Ticks(tDrawing), Places(iHeard));
    QCOMPARE(tDrawing.sPercentage, sPercentage);
    QVERIFY2(tDrawing.sSummary.ends_with(", " + sMinMax), tDrawing.sSummary.c_str());
}

void TimingModelTest::SummaryHasThreeLinesJoinedByCarriageReturns() {
    QCOMPARE(ui::TimingAlternate(Row, {30, 36, 360}).sSummary,
             std::string("Dual Channel, Time Between Messages 30 sec\r"
                         "Single Ch Fixed, Time Between Messages 60 sec\r"
                         "Single Ch Alterating, Time Between Messages, Min 30 sec, Max 210 sec"));
}

void TimingModelTest::SummaryRoundsFractionalTimes() {
    // 2.5 and 5 seconds; heard on A alone, so every 5 seconds.
    const std::string sSummary = ui::TimingAlternate(Row, {2.5, 100, 20}).sSummary;
    QCOMPARE(sSummary, std::string("Dual Channel, Time Between Messages 3 sec\r"
                                   "Single Ch Fixed, Time Between Messages 5 sec\r"
                                   "Single Ch Alterating, Time Between Messages, Min 5 sec, Max 5 sec"));
}

// Ten times 0.1 added up stays just below 1, so there is an eleventh round; ten times 0.1 multiplied is 1.
void TimingModelTest::TimesAddUpStepByStep() {
    const auto tDrawing = ui::TimingChannel(Row, {0.05, 1, 1}, 0, ui::ChannelAColour);
    QCOMPARE(Ticks(tDrawing).size(), std::size_t{11});
    QCOMPARE(Ticks(tDrawing).back(), 8400);
    QCOMPARE(tDrawing.sPercentage, std::string("55%"));
}

void TimingModelTest::GoodInputsAreRead_data() {
    QTest::addColumn<std::string>("sRateTx");
    QTest::addColumn<std::string>("sRateRc");
    QTest::addColumn<std::string>("sTimeSpan");
    QTest::addColumn<double>("dRateTx");
    QTest::addColumn<double>("dTimeSpan");
    QTest::newRow("the defaults") << std::string("30") << std::string("36") << std::string("360") << 30.0 << 360.0;
    QTest::newRow("fractions and blanks")
        << std::string(" 2.5 ") << std::string(".5") << std::string("10.25") << 2.5 << 10.25;
    QTest::newRow("a million steps") << std::string("1") << std::string("1") << std::string("1000000") << 1.0 << 1e6;
    QTest::newRow("just more than half a message")
        << std::string("30") << std::string("36") << std::string("15.1") << 30.0 << 15.1;
}

void TimingModelTest::GoodInputsAreRead() {
    QFETCH(std::string, sRateTx);
    QFETCH(std::string, sRateRc);
    QFETCH(std::string, sTimeSpan);
    ui::TimingInputs tInputs{};
    QCOMPARE(ui::ReadTimingInputs(sRateTx, sRateRc, sTimeSpan, tInputs), std::string());
    QTEST(tInputs.dRateTx, "dRateTx");
    QTEST(tInputs.dTimeSpan, "dTimeSpan");
}

void TimingModelTest::BadInputsAreRefusedByName_data() {
    QTest::addColumn<std::string>("sRateTx");
    QTest::addColumn<std::string>("sRateRc");
    QTest::addColumn<std::string>("sTimeSpan");
    QTest::addColumn<std::string>("sBeginning");
    const std::string s30("30"), s36("36"), s360("360");

    for (const char* pText : {"", "abc", "30x", "inf", "nan", "1e999", "30,5", "0x10"}) {
        const std::string sText(pText);
        QTest::addRow("Tx Rate '%s'", pText) << sText << s36 << s360 << std::string("Tx Rate is not a number");
        QTest::addRow("Rc Rate '%s'", pText)
            << s30 << sText << s360 << std::string("Rc Alternating Rate is not a number");
        QTest::addRow("Time Span '%s'", pText) << s30 << s36 << sText << std::string("Time Span is not a number");
    }
    for (const char* pText : {"0", "-0", "-30", "0.0"}) {
        const std::string sText(pText);
        QTest::addRow("Tx Rate %s", pText) << sText << s36 << s360 << std::string("Tx Rate must be");
        QTest::addRow("Rc Rate %s", pText) << s30 << sText << s360 << std::string("Rc Alternating Rate must be");
        QTest::addRow("Time Span %s", pText) << s30 << s36 << sText << std::string("Time Span must be");
    }
    QTest::newRow("too many messages") << std::string("0.0001") << s36 << s360 << std::string("Tx Rate is too small");
    QTest::newRow("a rate lost in any sum")
        << std::string("1e-300") << s36 << s360 << std::string("Tx Rate is too small");
    QTest::newRow("too many bands") << s30 << std::string("0.0001") << s360
                                    << std::string("Rc Alternating Rate is too small");
    QTest::newRow("just over a million") << std::string("1") << std::string("1") << std::string("1000001")
                                         << std::string("Tx Rate is too small");
    QTest::newRow("half a message counts as none")
        << s30 << s36 << std::string("15") << std::string("Time Span is too short");
}

void TimingModelTest::BadInputsAreRefusedByName() {
    QFETCH(std::string, sRateTx);
    QFETCH(std::string, sRateRc);
    QFETCH(std::string, sTimeSpan);
    QFETCH(std::string, sBeginning);
    ui::TimingInputs tInputs{1, 2, 3};
    const std::string sError = ui::ReadTimingInputs(sRateTx, sRateRc, sTimeSpan, tInputs);
    QVERIFY2(sError.starts_with(sBeginning), sError.c_str());
    QCOMPARE(tInputs.dRateTx, 1.0);
    QCOMPARE(tInputs.dRateRc, 2.0);
    QCOMPARE(tInputs.dTimeSpan, 3.0);
}

void TimingModelTest::LongestRunIsQuick() {
    ui::TimingInputs tInputs{};
    QVERIFY(ui::ReadTimingInputs("0.36", "0.36", "360000", tInputs).empty());
    const auto tDrawing = ui::TimingAlternate(Row, tInputs);
    QCOMPARE(tDrawing.sPercentage, std::string("100%"));
    QVERIFY(Ticks(tDrawing).size() >= 1000000);
}

QTEST_GUILESS_MAIN(TimingModelTest)
#include "TimingModelTest.moc"

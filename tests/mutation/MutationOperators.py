#!/usr/bin/python3
"""The operators on a text whose faults were listed by hand, line by line: all of them, and no others."""

import sys

import operators

SAMPLE = '''\
// Of a < b nothing, "nor of texts": 5
#include <vector>
constexpr int Rows = 256;
void Keep(int iFirst, int iSecond) {
    if (iFirst < 0 || Full(iSecond)) return;
    m_lRows = Sum(iFirst, std::max(iSecond, iFirst));  // 1
    for (int i = 0; i != iFirst; ++i) Add(Cell{i});
    const auto sName = bLong ? "a, b" : "";
    Say('x', R"(two
lines)");
    while (auto p = Next(true)) p->Go();
    Listen([this] { m_tBeat.Mark(); });
    return iFirst == 1'000 && Half(0.5);
}
'''

EXPECTED = {
    3: ["256 -> (256 + 1)", "256 -> (256 - 1)"],
    5: ["0 -> (0 + 1)", "< -> <=", "|| -> &&", "iFirst < 0 || Full(iSecond) -> !(iFirst < 0 || Full(iSecond))",
        "if (iFirst < 0 || Full(iSecond)) return; -> ;"],
    6: ["m_lRows = Sum(iFirst, std::max(iSecond, iFirst)); -> ;",
        "iFirst, std::max(iSecond, iFirst) -> std::max(iSecond, iFirst), iFirst"],
    7: ["0 -> (0 + 1)", "!= -> ==", "i != iFirst -> !(i != iFirst)",
        "for (int i = 0; i != iFirst; ++i) Add(Cell{i}); -> ;"],
    8: [" -> ~", " -> ~", "bLong -> !(bLong)"],
    9: ["'x' -> '~'", " -> ~", "'x', R\"(two\nlines)\" -> R\"(two\nlines)\", 'x'", "Say('x', R\"(two\nlines)\"); -> ;"],
    10: [" -> ~"],
    11: ["true -> false", "while (auto p = Next(true)) p->Go(); -> ;"],
    12: ["Listen([this] { m_tBeat.Mark(); }); -> ;", "m_tBeat.Mark(); -> ;"],
    13: ["1'000 -> (1'000 + 1)", "1'000 -> (1'000 - 1)", "== -> !=", "&& -> ||", "0.5 -> (0.5 + 1)", "0.5 -> (0.5 - 1)",
         "iFirst == 1'000 && Half(0.5) -> !(iFirst == 1'000 && Half(0.5))"],
}


def main():
    found = {line + 1: sorted(f"{SAMPLE[one.start:one.end]} -> {one.new}" for one in changes)
             for line, changes in operators.changes(SAMPLE).items()}
    wrong = [line for line in {*EXPECTED, *found} if sorted(EXPECTED.get(line, [])) != found.get(line, [])]
    for line in sorted(wrong):
        print(f"line {line}: {found.get(line)}, wanted {sorted(EXPECTED.get(line, []))}")
    first = operators.changes(SAMPLE)[2][0].applied_to(SAMPLE).splitlines()[2]
    if first != "constexpr int Rows = (256 + 1);":
        wrong.append(3)
        print(f"applied: {first}")
    return 1 if wrong else 0


sys.exit(main())

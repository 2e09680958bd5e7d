// The sentences that are no AIS messages: the board's signal levels and the GPS's position; and what a bad cable makes
// of any line.
#pragma once

#include <string>

#include "platform/runtime/DateTime.h"
#include "tools/AisEncoding.h"
#include "tools/Random.h"

namespace simulator {

// Spoils a line as a bad cable does: a character turned into another, the end cut off, a stretch of noise, or a wrong
// checksum. Never makes a line end.
void Damage(std::string& sText, Random& tChance);

// The board's curve: the dBm of a level, whose steps are some two dB, and the level of a dBm below the curve's top
// at 18.
double DbmOfLevel(double dLevel);
double LevelOfDbm(double dDbm);

// "$PNMLS,31,17,3*hh"; "$GPGLL,..."; "$GPRMC,...".
std::string SignalSentence(int iSignal, int iThreshold, int iInterval);
std::string GllSentence(const Motion& t, runtime::DateTime dtUtc);
std::string RmcSentence(const Motion& t, runtime::DateTime dtUtc);

}  // namespace simulator

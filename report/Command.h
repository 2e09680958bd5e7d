// The commands: a row for each, with the options that it takes and what makes its result.
#pragma once

#include <memory>
#include <span>

#include "report/Event.h"
#include "report/Options.h"

namespace report {

// Options that not every command takes.
enum Takes : unsigned {
    TakesNothing = 0,
    TakesBy = 1,
    TakesSector = 2,
    TakesRaw = 4,
    TakesPosition = 8,
    TakesGap = 16,
    TakesPictures = 32,
    TakesWatch = 64
};

struct Command {
    const char* sName;
    const char* sHelp;
    unsigned iTakes;
    // Of the files as one sequence; null for the commands that read otherwise (Compare.h, Watch.h).
    std::unique_ptr<Collector> (*pMake)(const Options& tOptions, Writer& tWriter);
};

// The first is what is done when none is named.
std::span<const Command> Commands();
// The commands whose results stand on a command's page behind its own: those of the summary are all that have pictures.
std::span<const Command> PartsOf(const Command& t);

}  // namespace report

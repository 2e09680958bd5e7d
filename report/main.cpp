// tidewatch-report: what recordings say about the receiver and its antenna.
#include <unistd.h>

#include <cstdio>
#include <string>

#include "report/Run.h"

int main(int argc, char** argv) {
    std::string sText;
    int iExit = report::ExitGood;
    const auto tAsked = report::ReadCommandLine(argc, argv, sText, iExit);
    if (tAsked) return report::Run(*tAsked, STDOUT_FILENO, STDERR_FILENO);
    std::fputs(sText.c_str(), iExit == report::ExitGood ? stdout : stderr);
    return iExit;
}

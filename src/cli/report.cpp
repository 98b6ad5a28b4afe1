#include "cli/report.h"

#include <cstdio>

namespace cli {

// A file name may hold line ends, a message may not.
int Fail(const std::string& message)
{
    std::string line = "choreo: " + message;
    for (char& c : line)
        if (c == '\n' || c == '\r')
            c = ' ';
    line += '\n';
    std::fflush(stdout);
    std::fputs(line.c_str(), stderr);
    return kFailed;
}

void Print(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

int Finished(int code)
{
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        return Fail("standard output could not be written");
    return code;
}

}  // namespace cli

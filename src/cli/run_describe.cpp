#include <cstdio>
#include <iostream>
#include <sstream>

#include "cli/run.h"
#include "fountain/describe.h"

namespace cli {
namespace {

std::string Sentence(document::Command command)
{
    return fountain::DescribeCommand(command.address, command.data) + '\n';
}

int DescribeInput()
{
    std::string line;
    for (int number = 1; std::getline(std::cin, line); ++number) {
        std::istringstream words(line);
        for (std::string word; words >> word;) {
            const auto command = ParseCommand(word);
            if (!command.value)
                return Fail("standard input, line " + std::to_string(number) + ": " +
                            command.error);
            Print(Sentence(*command.value));
        }
    }
    if (std::ferror(stdin) != 0)
        return Fail("standard input cannot be read");
    return Finished(kSuccess);
}

}  // namespace

int RunDescribe(const std::vector<std::string>& commands)
{
    if (commands.empty())
        return DescribeInput();
    std::string sentences;
    for (const std::string& text : commands) {
        const auto command = ParseCommand(text);
        if (!command.value)
            return Fail(command.error);
        sentences += Sentence(*command.value);
    }
    Print(sentences);
    return Finished(kSuccess);
}

}  // namespace cli

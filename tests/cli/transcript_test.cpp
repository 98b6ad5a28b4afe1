// Runs the transcripts: files of commands ("$ choreo ...") with what they print, standard output
// and error together, and the exit code where it is not 0. Each transcript has a folder of its own
// with a copy of the shows. With CHOREO_WRITE_TRANSCRIPTS set they are written anew, to be read.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string ReadText(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<fs::path> Transcripts()
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(TRANSCRIPTS))
        files.push_back(entry.path());
    return files;
}

/// What a command prints, and its exit code where it is not 0.
std::string Run(const fs::path& folder, const std::string& command)
{
    const std::string shell = "cd '" + folder.string() + "' && { " + command + "\n} 2>&1";
    std::FILE* pipe = popen(shell.c_str(), "r");
    if (pipe == nullptr)
        return "could not be started\n";
    std::string output;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
        output += static_cast<char>(c);
    const int status = pclose(pipe);
    if (!WIFEXITED(status))
        output += "[killed]\n";
    else if (WEXITSTATUS(status) != 0)
        output += "[exit " + std::to_string(WEXITSTATUS(status)) + "]\n";
    return output;
}

/// The transcript with every command run anew. Lines between "#" and the first "$" are remarks.
std::string Replay(const fs::path& folder, const std::string& transcript)
{
    std::istringstream lines(transcript);
    std::string replayed;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("#"))
            replayed += line + '\n';
        if (line.starts_with("$ "))
            replayed += line + '\n' + Run(folder, line.substr(2));
    }
    return replayed;
}

class Transcript : public testing::TestWithParam<fs::path> {
 protected:
    Transcript()
        : folder_(fs::temp_directory_path() / ("choreo_transcript_" + GetParam().stem().string() +
                                               '_' + std::to_string(getpid())))
    {
        fs::copy(SHOWS, folder_, fs::copy_options::recursive);
        setenv("PATH", (std::string(CHOREO_FOLDER) + ':' + std::getenv("PATH")).c_str(), 1);
        setenv("SAMPLES", SAMPLES, 1);
        setenv("LC_ALL", "C.UTF-8", 1);
    }
    ~Transcript() override
    {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    fs::path folder_;
};

TEST_P(Transcript, PrintsWhatItPrinted)
{
    const std::string expected = ReadText(GetParam());
    const std::string replayed = Replay(folder_, expected);
    if (std::getenv("CHOREO_WRITE_TRANSCRIPTS") != nullptr)
        std::ofstream(GetParam(), std::ios::binary) << replayed;
    else
        EXPECT_EQ(replayed, expected);
}

INSTANTIATE_TEST_SUITE_P(Cli, Transcript, testing::ValuesIn(Transcripts()),
                         [](const auto& transcript) { return transcript.param.stem().string(); });

}  // namespace

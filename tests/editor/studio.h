#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "editor/editor.h"
#include "support/hand_player.h"

namespace testing_support {

/// A folder with files of its own, gone with the object.
class Folder {
 public:
    Folder()
        : path_(std::filesystem::temp_directory_path() /
                ("editor_test_" + std::to_string(getpid())))
    {
        std::filesystem::remove_all(path_);
        std::filesystem::create_directory(path_);
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    void Add(const std::string& name, const std::string& content)
    {
        std::ofstream(path_ / name, std::ios::binary) << content;
    }
    [[nodiscard]] std::filesystem::path operator/(const std::string& name) const
    {
        return path_ / name;
    }

 private:
    std::filesystem::path path_;
};

/// Gives one answer to every question, and keeps what it was told and asked.
struct Answers final : editor::Prompts {
    bool yes = true;
    std::vector<std::string> warnings;
    std::vector<std::string> questions;  ///< "title: text"

    void Warn(const std::string& text) override { warnings.push_back(text); }
    bool Ask(const std::string& text, const std::string& title) override
    {
        questions.push_back(title + ": " + text);
        return yes;
    }
};

struct Studio {
    support::HandPlayer player;
    Answers prompts;
    editor::Editor editor{player, prompts};
};

}  // namespace testing_support

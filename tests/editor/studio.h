#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <string_view>
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
    std::vector<editor::Icon> icons;     ///< of the questions

    void Warn(const std::string& text) override { warnings.push_back(text); }
    bool Ask(const std::string& text, const std::string& title, editor::Icon icon) override
    {
        questions.push_back(title + ": " + text);
        icons.push_back(icon);
        return yes;
    }
};

/// Settings that last as long as the object, whatever editors come and go.
struct Settings final : editor::SettingsStore {
    std::map<std::string, std::string, std::less<>> values;
    std::vector<std::string> saved;  ///< keys, in the order in which they were saved

    std::string GetSettingValue(std::string_view key, std::string_view fallback) const override
    {
        const auto value = values.find(key);
        return value == values.end() ? std::string(fallback) : value->second;
    }
    void SaveSettingValue(std::string_view key, std::string_view value) override
    {
        values.insert_or_assign(std::string(key), std::string(value));
        saved.emplace_back(key);
    }
};

struct Studio {
    explicit Studio(editor::SettingsStore* settings = nullptr) : editor(player, prompts, settings)
    {
    }

    support::HandPlayer player;
    Answers prompts;
    editor::Editor editor;
};

}  // namespace testing_support

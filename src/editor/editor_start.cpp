// Which show is open: start-up, opening by name, the recent files, and the end.
#include <algorithm>
#include <array>
#include <optional>
#include <system_error>

#include "editor/editor.h"
#include "editor/show_name.h"

namespace editor {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLastFile = "LastFile";

struct DisplaySetting {
    const char* key;
    bool fountain::DisplayOptions::*option;
};

constexpr std::array<DisplaySetting, 4> kDisplaySettings{{
    {"Legends", &fountain::DisplayOptions::Legends},
    {"Candelabras", &fountain::DisplayOptions::Candelabras},
    {"BackCurtain", &fountain::DisplayOptions::BackCurtain},
    {"ABCodes", &fountain::DisplayOptions::ABCodes},
}};

}  // namespace

void Editor::Form_Activate(const fs::path& commandLine)
{
    if (started_)
        return;
    const bool remembered = commandLine.empty() && settings_ != nullptr;
    if (settings_ != nullptr)
        for (const DisplaySetting& setting : kDisplaySettings)
            options_.*setting.option = GetSettingValue(*settings_, setting.key, false);
    startBase_ = remembered ? fs::path(settings_->GetSettingValue(kLastFile, ""))
                            : Absolute(WithoutKnownExtension(commandLine));
    OpenControlFile(startBase_);
    if (remembered && !startBase_.empty() && !choreography_.fileExists)
        fileNotice_ =
            "the show of the last time was not found as " + choreography_.fileName.string();
}

void Editor::FinishStartUp()
{
    started_ = true;
    if (!MayOpen(choreography_.fileName))
        New();
    WarnOfRead();
}

void Editor::WarnOfRead()
{
    if (!started_)
        return;
    if (choreography_.blnTooMany)
        prompts_.Warn("At least one time contains too many actions.");
    if (lastRead_.timesLeftOut > 0)
        prompts_.Warn("The control file holds more times than the 54,000 that fit: " +
                      std::to_string(lastRead_.timesLeftOut) + " of them were left out.");
}

void Editor::OpenShow(const fs::path& name)
{
    const fs::path base = WithoutKnownExtension(name);
    OpenControlFile(base);
    OpenMusicOf(base);
    WarnOfRead();
}

void Editor::OpenControlFile(const fs::path& base)
{
    mmSong_.Close();
    ReadControlFile(base.empty() ? base : Append(base, kControlExtension));
}

void Editor::OpenMusicOf(const fs::path& base)
{
    const bool mp3 = !base.empty() && FindMusic(Append(base, ".mp3")).has_value();
    SelectFilter(mp3 ? 0 : 1);
    OpenMusicFile(base.empty() ? base : Append(base, musicExtension_));
    if (mmSong_.FileName().empty())
        SelectFilter(0);
}

void Editor::ReadControlFile(const fs::path& name)
{
    Read(Reach::AnotherShow, name);
}

void Editor::Read(Reach reach, const fs::path& name, std::string_view title)
{
    const fs::path fileName = document::FindFile(name).value_or(name);
    if (shift_.visible)
        cmdShift_Click(1);
    before_.reset();
    lastSave_ = {};
    fileNotice_.clear();
    if (guard_ != nullptr)
        guard_->Reading(fileName);
    const auto read = [&] {
        lastRead_ = document::ReadControlFile(choreography_, fileName);
        return true;
    };
    Store(reach, read, title);
    playback_.ResetPlayback();
    if (choreography_.fileExists)
        AddToRecent(fileName);
}

void Editor::OpenMusicFile(const fs::path& name)
{
    ++musicVersion_;
    mmSong_.Stop();
    mmSong_.Close();
    if (const auto file = FindMusic(name))
        mmSong_.Open(*file);
    playback_.ResetPlayback();
}

void Editor::AddToRecent(const fs::path& controlFile)
{
    const fs::path name = Absolute(controlFile);
    files_.folder = name.parent_path();
    AddRecent(recent_, name);
    if (settings_ != nullptr)
        SaveRecent(*settings_, recent_);
}

void Editor::OpenRecent(int index)
{
    if (index < 0 || index >= static_cast<int>(recent_.size()) || !FileItemWorks(kOpenItem))
        return;
    const fs::path name = recent_[static_cast<std::size_t>(index)];
    const std::optional<fs::path> file = document::FindFile(name);
    if (!file) {
        std::erase(recent_, name);
        if (settings_ != nullptr)
            SaveRecent(*settings_, recent_);
        prompts_.Warn(name.string() + " is not there any more. It was taken from the list.");
        return;
    }
    static_cast<void>(OpenFile(*file));
}

bool Editor::OpenFile(const fs::path& controlFile)
{
    if (!FileItemWorks(kOpenItem) || !MayOpen(controlFile) || KeepsChanges())
        return false;
    ReadControlFile(controlFile);
    OpenMusicOf(WithoutKnownExtension(controlFile));
    WarnOfRead();
    return true;
}

bool Editor::MayOpen(const fs::path& file)
{
    return guard_ == nullptr || file.empty() ||
           guard_->MayOpen(document::FindFile(file).value_or(file));
}

bool Editor::IsShowFile(const fs::path& name)
{
    return KindOf(name) != ShowFile::None;
}

bool Editor::OpenDropped(const fs::path& name)
{
    const ShowFile kind = KindOf(name);
    if (kind == ShowFile::None || !document::FileExists(name) || !FileItemWorks(kOpenItem))
        return false;
    const fs::path file = Absolute(name);
    if (!MayOpen(Append(WithoutKnownExtension(file), kControlExtension)) || KeepsChanges())
        return true;
    if (kind == ShowFile::Control) {
        ReadControlFile(file);
        OpenMusicOf(WithoutKnownExtension(file));
    } else {
        SelectFilter(kind == ShowFile::Mp3 ? 0 : 1);
        OpenMusicFile(file);
        ReadControlFile(Append(WithoutKnownExtension(file), kControlExtension));
    }
    WarnOfRead();
    return true;
}

void Editor::Form_Unload()
{
    playback_.BringToRest();
    mmSong_.Close();
    unloaded_ = true;
    if (journal_ != nullptr && !choreography_.blnChanged)
        journal_->Drop();
    if (settings_ == nullptr)
        return;
    for (const DisplaySetting& setting : kDisplaySettings)
        SaveSettingValue(*settings_, setting.key, options_.*setting.option);
    // The first "." it is, even that of a folder.
    const std::string name = choreography_.fileName.string();
    settings_->SaveSettingValue(kLastFile, name.substr(0, name.find('.')));
}

}  // namespace editor

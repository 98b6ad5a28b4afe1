// The File menu and the file selection panel.
#include <optional>
#include <utility>

#include "editor/editor.h"
#include "editor/show_name.h"
#include "editor/summary.h"

namespace editor {

namespace fs = std::filesystem;

bool Editor::FileItemWorks(int item)
{
    mnuFile_Click();
    return !playback_.SnippetPlays() && Transport().ItemEnabled(timeline::kFileMenu, item);
}

void Editor::mnuFileAction_Click(int item)
{
    if (!FileItemWorks(item))
        return;
    switch (item) {
        case kNewItem:
            New();
            break;
        case kOpenItem:
            ShowFilePanel(FilePanelMode::Open);
            break;
        case kSaveItem:
            files_.mode = FilePanelMode::Save;
            SaveTo(choreography_.fileName);
            break;
        case kSaveAsItem:
            ShowFilePanel(FilePanelMode::Save);
            break;
        case kUndoAllItem:
            UndoAll();
            break;
        case kExitItem:
            if (Form_QueryUnload(UnloadMode::Code))
                Form_Unload();
            break;
        default:
            break;
    }
}

bool Editor::MayPrint()
{
    return FileItemWorks(kPrintItem) && choreography_.lngLastSlot() > 0;
}

bool Editor::KeepsChanges()
{
    if (choreography_.blnChanged)
        choreography_.blnChanged = ConfirmDiscard();
    return choreography_.blnChanged;
}

// A control file that has nothing but its extension for a name is none.
void Editor::New()
{
    if (KeepsChanges()) {
        playback_.ResetPlayback();
        return;
    }
    OpenMusicFile({});
    ReadControlFile({});
}

void Editor::UndoAll()
{
    if (!prompts_.Ask("Do you want to cancel all changes and\nreload the original choreography?",
                      "", Icon::Question))
        return;
    Read(Reach::Everything, choreography_.fileName, "Undo All");
    if (!mmSong_.FileName().empty())
        mmSong_PrevClick();
    WarnOfRead();
}

void Editor::SetVolumes(std::vector<fs::path> volumes)
{
    files_.drvFileSelect = std::move(volumes);
    if (files_.visible)
        RefreshLists(files_);
}

void Editor::ShowFilePanel(FilePanelMode mode)
{
    if (!FileItemWorks(mode == FilePanelMode::Open ? kOpenItem : kSaveAsItem))
        return;
    playback_.BringToRest();
    files_.mode = mode;
    files_.txtFileSelect.clear();
    files_.lblFileSelect = Summary(choreography_, mmSong_.FileName(), mmSong_.Length());
    files_.cboFileSelectEnabled = mode == FilePanelMode::Open;
    if (mode == FilePanelMode::Save)
        SelectFilter(kControlFilter);
    RefreshLists(files_);
    files_.visible = true;
    playback_.SetPanelOpen(true);
}

void Editor::HideFilePanel()
{
    if (!files_.visible)
        return;
    files_.visible = false;
    playback_.SetPanelOpen(false);
}

void Editor::SelectFilter(int index)
{
    files_.cboFileSelect = index;
    if (index != kControlFilter)
        musicExtension_ = kFileFilters[static_cast<std::size_t>(index)].pattern.substr(1);
}

void Editor::cboFileSelect_Click(int index)
{
    if (!files_.visible || !files_.cboFileSelectEnabled || index < 0 ||
        index >= static_cast<int>(kFileFilters.size()))
        return;
    SelectFilter(index);
    RefreshLists(files_);
}

void Editor::drvFileSelect_Change(int index)
{
    if (files_.visible && index >= 0 && index < static_cast<int>(files_.drvFileSelect.size()))
        static_cast<void>(
            EnterFolder(files_, fs::path(files_.drvFileSelect[static_cast<std::size_t>(index)])));
}

void Editor::dirFileSelect_Change(int index)
{
    if (files_.visible && index >= 0 && index < static_cast<int>(files_.folders.size()))
        static_cast<void>(
            EnterFolder(files_, fs::path(files_.folders[static_cast<std::size_t>(index)])));
}

void Editor::filFileSelect_DblClick(int index)
{
    if (!files_.visible || index < 0 || index >= static_cast<int>(files_.files.size()))
        return;
    files_.txtFileSelect =
        AddBackslash(files_.folder).string() + files_.files[static_cast<std::size_t>(index)];
    OpenOrSave(files_.txtFileSelect);
}

void Editor::cmdFileSelect_Click(int index)
{
    if (!files_.visible)
        return;
    if (index == 1)
        HideFilePanel();
    if (index != 0)
        return;
    files_.txtFileSelect = TrimBlanks(files_.txtFileSelect);
    OpenOrSave(files_.txtFileSelect);
}

void Editor::txtFileSelect_Change(const std::string& text)
{
    if (files_.visible)
        files_.txtFileSelect = text;
}

void Editor::OpenOrSave(const std::string& name)
{
    const std::string base = BaseOfName(name);
    if (base.empty())
        return;
    const fs::path path = files_.folder / base;
    if (files_.mode == FilePanelMode::Save) {
        SaveAs(Append(path, kControlExtension));
        return;
    }
    const bool open = MayOpen(Append(path, kControlExtension)) && !KeepsChanges();
    if (open) {
        OpenMusicFile(Append(path, musicExtension_));
        ReadControlFile(Append(path, kControlExtension));
    }
    HideFilePanel();
    if (open)
        WarnOfRead();
}

// Names that differ in nothing but the case of their letters mean the same file.
void Editor::SaveAs(const fs::path& path)
{
    lastSave_ = {};
    const std::optional<fs::path> present = document::FindFile(path);
    if (present &&
        !prompts_.Ask("Do you want to replace the existing file named\n" + present->string() + "?",
                      "", Icon::Question))
        return;
    if (SaveTo(present.value_or(path)).outcome == document::SaveOutcome::Saved)
        HideFilePanel();
    else
        RefreshLists(files_);
}

}  // namespace editor

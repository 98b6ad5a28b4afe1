#include "editor/show_name.h"

#include <algorithm>
#include <string>
#include <system_error>

#include "document/ascii.h"
#include "document/control_file.h"

namespace editor {
namespace {

namespace fs = std::filesystem;

std::string LowerExtension(const fs::path& name)
{
    std::string extension = name.extension().string();
    std::ranges::transform(extension, extension.begin(), document::LowerAscii);
    return extension;
}

}  // namespace

ShowFile KindOf(const fs::path& name)
{
    const std::string extension = LowerExtension(name);
    if (extension == kControlExtension)
        return ShowFile::Control;
    if (extension == ".mp3")
        return ShowFile::Mp3;
    return extension == ".wav" ? ShowFile::Wav : ShowFile::None;
}

fs::path WithoutKnownExtension(const fs::path& name)
{
    return KindOf(name) == ShowFile::None ? name : fs::path(name).replace_extension();
}

fs::path Append(fs::path base, std::string_view extension)
{
    base += extension;
    return base;
}

fs::path Absolute(const fs::path& name)
{
    std::error_code error;
    const fs::path absolute = name.empty() ? name : fs::absolute(name, error);
    return (error ? name : absolute).lexically_normal();
}

std::optional<fs::path> FindMusic(const fs::path& name)
{
    const fs::path lower = fs::path(name).replace_extension(LowerExtension(name));
    if (!document::FileExists(name) && document::FileExists(lower))
        return lower;
    return document::FindFile(name);
}

}  // namespace editor

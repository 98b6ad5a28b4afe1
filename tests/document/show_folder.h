#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "document/choreography.h"
#include "packed.h"

namespace testing_support {

/// The file that `ShowFolder::Edited` makes.
inline constexpr const char* kShow = "ct0-381\r\n00:01.0003-020\r\n";

/// A folder of its own, with a show that is there or is not.
class ShowFolder : public testing::Test {
 protected:
    ShowFolder()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "choreographer_test_XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
        show_ = folder_ / "show.ctl";
    }
    ~ShowFolder() override { std::filesystem::remove_all(folder_); }

    void Put(const std::string& name, std::string_view content) const
    {
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }
    // "-" for a file that is not there.
    [[nodiscard]] std::string Get(const std::string& name) const
    {
        std::ostringstream bytes;
        bytes << std::ifstream(folder_ / name, std::ios::binary).rdbuf();
        return std::filesystem::exists(folder_ / name) ? bytes.str() : "-";
    }
    [[nodiscard]] static document::Choreography Edited()
    {
        document::Choreography show;
        InsertSlot(show, 0, 1000, Packed("003-020"));
        show.blnChanged = true;
        return show;
    }

    std::filesystem::path folder_;
    std::filesystem::path show_;
};

}  // namespace testing_support

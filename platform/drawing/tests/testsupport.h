// What the runtime's tests share.
#pragma once

#include <drawing/runtime.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>

#include "support/outcomes.h"

inline void PrintTo(const OdString& text, std::ostream* out) {
    *out << '"' << OdStringToUtf8String(text).c_str() << '"';
}

/// A folder of the test's own, which goes with the object.
class TempFolder {
  public:
    TempFolder() {
        std::string pattern = testing::TempDir() + "drawing-XXXXXX";
        folder = mkdtemp(pattern.data());
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    const std::filesystem::path& path() const { return folder; }
    OdString path(const std::string& name) const {
        return OdUtf8StringToOdString((folder / name).string());
    }
    /// Writes a file and gives its path.
    OdString write(const std::string& name, const std::string& contents) const {
        std::ofstream(folder / name, std::ios::binary) << contents;
        return path(name);
    }

  private:
    std::filesystem::path folder;
};

/// A test during which the runtime is up.
class RuntimeTest : public ::testing::Test {
  protected:
    void SetUp() override { odInitialize(&services); }
    void TearDown() override { odUninitialize(); }

    OdStaticRxObject<ExSystemServices> services;
};

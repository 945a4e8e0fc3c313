// What the module exports and which libraries it needs at load time.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "tests/wine/resources/TestModule.h"

namespace {

std::string Upper(std::string text) {
    for (char& c : text) c = static_cast<char>(toupper(static_cast<unsigned char>(c)));
    return text;
}

}  // namespace

TEST(ModuleTables, ExportsExactlyTheEntryPointAndTheDialogProcedure) {
    std::vector<std::string> names = ExportedNames();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"DissolveProc", "ENTRYPOINT"}));
}

TEST(ModuleTables, ImportsOnlySystemLibraries) {
    const std::vector<std::string> system = {
        "KERNEL32.DLL", "USER32.DLL",  "GDI32.DLL",    "MSVCRT.DLL",   "COMCTL32.DLL",
        "SHELL32.DLL",  "VERSION.DLL", "ADVAPI32.DLL", "COMDLG32.DLL", "OLE32.DLL"};
    std::vector<std::string> imports;
    for (const std::string& name : ImportedLibraries()) imports.push_back(Upper(name));
    for (const std::string& name : imports)
        EXPECT_NE(std::find(system.begin(), system.end(), name), system.end())
            << name << " would have to be shipped with the module";
    for (const char* needed : {"KERNEL32.DLL", "VERSION.DLL"})
        EXPECT_NE(std::find(imports.begin(), imports.end(), needed), imports.end()) << needed;
}

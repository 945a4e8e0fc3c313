// The built module as a host finds it: its resources, loaded as a data file
// so that none of its code runs, and the names in its export and import
// tables, read from the file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Bytes of a resource, empty when the module or the resource is missing.
// A name may also be an ordinal made with MAKEINTRESOURCEA.
std::vector<uint8_t> LoadModuleResource(const char* type, const char* name);
std::vector<uint8_t> LoadModuleResource(const char* type, int id);

// Empty when the file is not a readable PE image of the tests' own kind
// (32-bit or 64-bit).
std::vector<std::string> ExportedNames();
std::vector<std::string> ImportedLibraries();

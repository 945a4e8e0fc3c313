#include "tests/wine/resources/TestModule.h"

#include <windows.h>

#include <fstream>
#include <iterator>

namespace {

// A PE file read into memory, with the mapping from relative virtual
// addresses to file offsets through the section table. Only an image with
// the optional header of this program's own kind (32-bit or 64-bit) is read.
class PeFile {
  public:
    PeFile() {
        std::ifstream in(QUORVEX_MODULE_PATH, std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        const auto* dos = At<IMAGE_DOS_HEADER>(0);
        if (!dos || dos->e_magic != IMAGE_DOS_SIGNATURE || dos->e_lfanew < 0) return;
        headers_ = At<IMAGE_NT_HEADERS>(dos->e_lfanew);
        if (!headers_ || headers_->Signature != IMAGE_NT_SIGNATURE ||
            headers_->OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR_MAGIC) {
            headers_ = nullptr;
            return;
        }
        sectionsOffset_ = dos->e_lfanew + offsetof(IMAGE_NT_HEADERS, OptionalHeader) +
                          headers_->FileHeader.SizeOfOptionalHeader;
    }

    // The directory's start in the file, or 0 when it is absent.
    size_t Directory(int index) const {
        if (!headers_ || headers_->OptionalHeader.NumberOfRvaAndSizes <= DWORD(index)) return 0;
        return Offset(headers_->OptionalHeader.DataDirectory[index].VirtualAddress);
    }

    // File offset of an address inside a section, or 0.
    size_t Offset(uint32_t rva) const {
        if (rva == 0 || !headers_) return 0;
        for (WORD i = 0; i < headers_->FileHeader.NumberOfSections; ++i) {
            const auto* section =
                At<IMAGE_SECTION_HEADER>(sectionsOffset_ + i * sizeof(IMAGE_SECTION_HEADER));
            if (!section) return 0;
            if (rva >= section->VirtualAddress &&
                rva - section->VirtualAddress < section->SizeOfRawData)
                return section->PointerToRawData + (rva - section->VirtualAddress);
        }
        return 0;
    }

    template <typename T>
    const T* At(size_t offset) const {
        if (offset > bytes_.size() || bytes_.size() - offset < sizeof(T)) return nullptr;
        return reinterpret_cast<const T*>(bytes_.data() + offset);
    }

    std::string StringAt(uint32_t rva) const {
        std::string text;
        for (size_t at = Offset(rva); at != 0 && at < bytes_.size() && bytes_[at] != 0; ++at)
            text += static_cast<char>(bytes_[at]);
        return text;
    }

  private:
    std::vector<uint8_t> bytes_;
    const IMAGE_NT_HEADERS* headers_ = nullptr;
    size_t sectionsOffset_ = 0;
};

}  // namespace

std::vector<uint8_t> LoadModuleResource(const char* type, const char* name) {
    std::vector<uint8_t> bytes;
    HMODULE module = LoadLibraryExA(QUORVEX_MODULE_PATH, nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (!module) return bytes;
    if (HRSRC info = FindResourceA(module, name, type)) {
        const auto* data = static_cast<const uint8_t*>(LockResource(LoadResource(module, info)));
        if (data) bytes.assign(data, data + SizeofResource(module, info));
    }
    FreeLibrary(module);
    return bytes;
}

std::vector<uint8_t> LoadModuleResource(const char* type, int id) {
    return LoadModuleResource(type, MAKEINTRESOURCEA(id));
}

std::vector<std::string> ExportedNames() {
    std::vector<std::string> names;
    const PeFile pe;
    const auto* exports = pe.At<IMAGE_EXPORT_DIRECTORY>(pe.Directory(IMAGE_DIRECTORY_ENTRY_EXPORT));
    if (!exports) return names;
    const size_t table = pe.Offset(exports->AddressOfNames);
    for (DWORD i = 0; i < exports->NumberOfNames; ++i) {
        const auto* nameRva = pe.At<DWORD>(table + i * sizeof(DWORD));
        if (!table || !nameRva) break;
        names.push_back(pe.StringAt(*nameRva));
    }
    return names;
}

std::vector<std::string> ImportedLibraries() {
    std::vector<std::string> names;
    const PeFile pe;
    size_t at = pe.Directory(IMAGE_DIRECTORY_ENTRY_IMPORT);
    if (at == 0) return names;
    for (const IMAGE_IMPORT_DESCRIPTOR* import;
         (import = pe.At<IMAGE_IMPORT_DESCRIPTOR>(at)) && import->Name != 0; at += sizeof *import)
        names.push_back(pe.StringAt(import->Name));
    return names;
}

#include "tests/toolkit/interchange/dawproject/Archive.h"

#include <zip.h>

#include <algorithm>
#include <stdexcept>

#include "toolkit/interchange/OutputFile.h"
#include "toolkit/interchange/ZipArchive.h"

namespace test {

namespace interchange = toolkit::interchange;

void WriteArchive(const std::filesystem::path& path, const Entries& entries) {
    interchange::Outputs outputs;
    interchange::ZipWriter zip(outputs.Add(path));
    for (const auto& [name, content] : entries) {
        zip.Add(name, content);
    }
    zip.Finish();
    outputs.Commit();
}

void WriteBomb(const std::filesystem::path& path, const std::string& entry, std::size_t size) {
    constexpr zip_uint32_t kTightest = 9;
    const std::string zeros(size, '\0');
    zip_t* const zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    zip_source_t* const source = zip_source_buffer(zip, zeros.data(), zeros.size(), 0);
    const zip_int64_t index = zip_file_add(zip, entry.c_str(), source, 0);
    zip_set_file_compression(zip, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, kTightest);
    if (zip_close(zip) != 0) {
        throw std::runtime_error("the archive cannot be written");
    }
}

Entries ReadArchive(const std::filesystem::path& path) {
    const interchange::ZipReader zip(path);
    Entries entries;
    for (const interchange::ZipEntry& entry : zip.Entries()) {
        entries.emplace_back(entry.name, zip.Read(entry.name, entry.size));
    }
    return entries;
}

std::string EntryOf(const std::filesystem::path& path, const std::string& name) {
    const Entries entries = ReadArchive(path);
    const auto found = std::ranges::find(entries, name, &Entries::value_type::first);
    return found != entries.end() ? found->second : "";
}

}  // namespace test

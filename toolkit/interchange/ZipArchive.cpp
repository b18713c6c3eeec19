#include "toolkit/interchange/ZipArchive.h"

#include <fmt/format.h>
#include <zip.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "toolkit/FileContent.h"
#include "toolkit/interchange/Failure.h"
#include "toolkit/interchange/OutputFile.h"

namespace toolkit::interchange {
namespace {

constexpr std::size_t kBufferSize = 1 << 16;

/// Whether the name stays in the folder where the archive is unpacked, on all systems.
bool IsTame(std::string_view name) {
    const bool isOdd = std::ranges::any_of(
        name, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == '\\' || c == ':'; });
    if (name.empty() || isOdd) {
        return false;
    }
    while (!name.empty()) {
        const std::string_view part = name.substr(0, name.find('/'));
        if (part.empty() || part == "." || part == "..") {
            return false;
        }
        name.remove_prefix(std::min(part.size() + 1, name.size()));
    }
    return true;
}

struct CloseEntry {
    void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

std::string WordsOf(int code) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    std::string words = zip_error_strerror(&error);
    zip_error_fini(&error);
    return words;
}

}  // namespace

// Reading

struct ZipReader::Archive {
    explicit Archive(zip_t* opened) : zip(opened) {}
    ~Archive() { zip_discard(zip); }
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;

    zip_t* zip;
};

ZipReader::ZipReader(const std::filesystem::path& file, const ZipLimits& limits) : file_(file) {
    if (const auto problem = FindProblem(file.string())) {
        throw Failure({.file = file.string(), .what = problem->what, .advice = problem->advice});
    }
    int code = 0;
    zip_t* const opened = zip_open(file.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &code);
    if (opened == nullptr) {
        throw Failure(
            {.file = file.string(), .what = "is no ZIP archive, or is damaged: " + WordsOf(code)});
    }
    archive_ = std::make_unique<Archive>(opened);
    const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(opened, 0));
    if (count > limits.entries) {
        Refuse({}, fmt::format("the archive has {} entries; {} are taken", count, limits.entries));
    }
    constexpr std::uint64_t kAlwaysTaken = 1 << 20;
    std::uint64_t total = 0;
    for (zip_uint64_t i = 0; i < count; ++i) {
        zip_stat_t facts;
        if (zip_stat_index(opened, i, 0, &facts) != 0 || (facts.valid & ZIP_STAT_NAME) == 0) {
            Refuse({}, "the archive has an entry without a name");
        }
        std::string name = facts.name;
        const bool isFolder = name.ends_with('/');
        if (!IsTame(isFolder ? std::string_view(name).substr(0, name.size() - 1) : name)) {
            Refuse(name, "the name leads out of the archive");
        }
        if ((facts.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 &&
            facts.encryption_method != ZIP_EM_NONE) {
            Refuse(name, "the entry is encrypted");
        }
        total += facts.size;
        if (facts.size > limits.bytes || total > limits.bytes) {
            Refuse(name, "the archive unpacks to too many bytes");
        }
        if (facts.size > kAlwaysTaken && facts.size / limits.ratio > facts.comp_size) {
            Refuse(name, fmt::format("{} bytes unpack to {}, which no honest file does",
                                     facts.comp_size, facts.size));
        }
        byName_.emplace_back(name, entries_.size());
        entries_.push_back({.name = std::move(name), .size = facts.size});
    }
    std::ranges::sort(byName_);
    const auto twin = std::ranges::adjacent_find(
        byName_, {}, [](const auto& entry) -> const std::string& { return entry.first; });
    if (twin != byName_.end()) {
        Refuse(twin->first, "the archive has two entries of this name");
    }
}

ZipReader::~ZipReader() = default;

const ZipEntry* ZipReader::Find(std::string_view name) const {
    const auto found = std::ranges::lower_bound(
        byName_, name, {}, [](const auto& entry) -> std::string_view { return entry.first; });
    return found != byName_.end() && found->first == name ? &entries_[found->second] : nullptr;
}

std::string ZipReader::Read(std::string_view name, std::uint64_t most) const {
    std::string content;
    if (const ZipEntry* const entry = Find(name); entry != nullptr && entry->size > most) {
        Refuse(name, fmt::format("the entry has {} bytes; {} are taken", entry->size, most));
    }
    Read(name, [&](std::string_view block) { content.append(block); });
    return content;
}

void ZipReader::Read(std::string_view name,
                     const std::function<void(std::string_view)>& sink) const {
    const ZipEntry* const entry = Find(name);
    if (entry == nullptr) {
        Refuse(name, "the archive has no such entry");
    }
    const auto index = static_cast<zip_uint64_t>(entry - entries_.data());
    const std::unique_ptr<zip_file_t, CloseEntry> opened(zip_fopen_index(archive_->zip, index, 0));
    if (opened == nullptr) {
        Refuse(name, zip_strerror(archive_->zip));
    }
    std::vector<char> block(kBufferSize);
    std::uint64_t read = 0;
    while (true) {
        const zip_int64_t size = zip_fread(opened.get(), block.data(), block.size());
        if (size < 0) {
            Refuse(name, fmt::format("the entry is damaged: {}", zip_file_strerror(opened.get())));
        }
        read += static_cast<std::uint64_t>(size);
        if (read > entry->size || (size == 0 && read != entry->size)) {
            Refuse(name, "the entry is damaged: it has another length than it says");
        }
        if (size == 0) {
            return;
        }
        sink({block.data(), static_cast<std::size_t>(size)});
    }
}

void ZipReader::Refuse(std::string_view entry, const std::string& what) const {
    throw Failure({.file = file_.string(),
                   .what = entry.empty() ? what : fmt::format("entry \"{}\": {}", entry, what)});
}

// Writing

namespace {

constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();

// Of the format.
constexpr std::uint32_t kHeaderMark = 0x04034B50;
constexpr std::uint32_t kSizesMark = 0x08074B50;
constexpr std::uint32_t kDirectoryMark = 0x02014B50;
constexpr std::uint32_t kEndMark = 0x06054B50;
constexpr std::uint16_t kVersion = 20;
constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;
constexpr std::uint16_t kSizesFollow = 1 << 3;
constexpr std::uint16_t kNameIsUtf8 = 1 << 11;
/// The first day that the format knows: an archive does not tell when it was made.
constexpr std::uint16_t kDate = (1 << 5) | 1;

/// Integers of the format, lowest byte first.
class Record {
public:
    Record& Put16(std::uint32_t value) { return Put(value, 2); }
    Record& Put32(std::uint64_t value) { return Put(value, 4); }
    Record& Put(std::string_view text) {
        bytes_ += text;
        return *this;
    }
    /// What its header and the directory both say of an entry.
    template <class Entry>
    Record& PutFacts(const Entry& entry) {
        return Put16(entry.flags)
            .Put16(entry.method)
            .Put16(0)  // time
            .Put16(kDate)
            .Put32(entry.checksum)
            .Put32(entry.packed)
            .Put32(entry.size)
            .Put16(static_cast<std::uint32_t>(entry.name.size()))
            .Put16(0);  // extra fields
    }
    const std::string& Bytes() const { return bytes_; }

private:
    Record& Put(std::uint64_t value, int count) {
        for (int i = 0; i < count; ++i) {
            bytes_ += static_cast<char>((value >> (8 * i)) & 0xFF);
        }
        return *this;
    }

    std::string bytes_;
};

std::uint32_t ChecksumOf(std::string_view block, std::uint32_t before) {
    return static_cast<std::uint32_t>(
        crc32_z(before, reinterpret_cast<const unsigned char*>(block.data()), block.size()));
}

}  // namespace

struct ZipWriter::Entry {
    std::string name;
    std::uint64_t position = 0;
    std::uint16_t flags = kNameIsUtf8;
    std::uint16_t method = kDeflated;
    std::uint32_t checksum = 0;
    std::uint64_t packed = 0;
    std::uint64_t size = 0;
};

struct ZipWriter::Packer {
    Packer() {
        // The format has no header and no checksum around the packed bytes: negative.
        constexpr int kRaw = -MAX_WBITS;
        constexpr int kMemory = 8;
        if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, kRaw, kMemory, Z_DEFAULT_STRATEGY) !=
            Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Packer() { deflateEnd(&stream); }
    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;

    z_stream stream{};
    std::array<unsigned char, kBufferSize> block{};
};

ZipWriter::ZipWriter(OutputFile& out) : out_(out), packer_(std::make_unique<Packer>()) {}

ZipWriter::~ZipWriter() = default;

void ZipWriter::BeginEntry(std::string_view name, bool isPacked, bool isCounted) {
    Entry& entry = entries_.emplace_back();
    entry.name = name;
    entry.position = position_;
    entry.method = isPacked ? kDeflated : kStored;
    entry.flags = isCounted ? kNameIsUtf8 : kNameIsUtf8 | kSizesFollow;
}

void ZipWriter::WriteHeader(const Entry& entry) {
    Emit(Record().Put32(kHeaderMark).Put16(kVersion).PutFacts(entry).Put(entry.name).Bytes());
}

void ZipWriter::Begin(std::string_view name) {
    BeginEntry(name, true, false);
    WriteHeader(entries_.back());
    deflateReset(&packer_->stream);
}

void ZipWriter::Write(std::string_view block) {
    Entry& entry = entries_.back();
    entry.checksum = ChecksumOf(block, entry.checksum);
    entry.size += block.size();
    z_stream& stream = packer_->stream;
    // zlib counts in 32 bits.
    constexpr std::size_t kMostAtOnce = 1 << 30;
    while (!block.empty()) {
        const std::size_t taken = std::min(block.size(), kMostAtOnce);
        stream.next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(block.data()));
        stream.avail_in = static_cast<uInt>(taken);
        block.remove_prefix(taken);
        while (stream.avail_in > 0) {
            Pack(Z_NO_FLUSH);
        }
    }
}

/// @return whether all is packed
bool ZipWriter::Pack(int flush) {
    z_stream& stream = packer_->stream;
    stream.next_out = packer_->block.data();
    stream.avail_out = static_cast<uInt>(packer_->block.size());
    const bool isEnd = deflate(&stream, flush) == Z_STREAM_END;
    const std::size_t size = packer_->block.size() - stream.avail_out;
    entries_.back().packed += size;
    Emit({reinterpret_cast<const char*>(packer_->block.data()), size});
    return isEnd;
}

void ZipWriter::End() {
    while (!Pack(Z_FINISH)) {
    }
    const Entry& entry = entries_.back();
    if (entry.size > kMost) {
        throw Failure({.file = out_.Path().string(),
                       .what = fmt::format("entry \"{}\" would be larger than 4 GiB", entry.name)});
    }
    Emit(Record()
             .Put32(kSizesMark)
             .Put32(entry.checksum)
             .Put32(entry.packed)
             .Put32(entry.size)
             .Bytes());
}

void ZipWriter::Add(std::string_view name, std::string_view content) {
    Begin(name);
    Write(content);
    End();
}

void ZipWriter::AddFile(std::string_view name, const std::string& path) {
    BeginEntry(name, false, true);
    Entry& entry = entries_.back();
    const auto readAll = [&](const auto& use) {
        FileBlocks blocks(path);
        for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
            use(block);
        }
        if (const auto& problem = blocks.Failure()) {
            throw Failure({.file = path, .what = problem->what, .advice = problem->advice});
        }
    };
    readAll([&](std::string_view block) {
        entry.checksum = ChecksumOf(block, entry.checksum);
        entry.size += block.size();
    });
    if (entry.size > kMost) {
        throw Failure({.file = path, .what = "is too large for a ZIP archive, which takes 4 GiB"});
    }
    entry.packed = entry.size;
    WriteHeader(entry);
    std::uint32_t checksum = 0;
    readAll([&](std::string_view block) {
        checksum = ChecksumOf(block, checksum);
        Emit(block);
    });
    if (checksum != entry.checksum) {
        throw Failure({.file = path, .what = "changed while it was copied"});
    }
}

void ZipWriter::Finish() {
    const std::uint64_t start = position_;
    for (const Entry& entry : entries_) {
        Emit(Record()
                 .Put32(kDirectoryMark)
                 .Put16(kVersion)
                 .Put16(kVersion)
                 .PutFacts(entry)
                 .Put16(0)  // comment
                 .Put16(0)  // disk
                 .Put16(0)  // internal attributes
                 .Put32(0)  // external attributes
                 .Put32(entry.position)
                 .Put(entry.name)
                 .Bytes());
    }
    constexpr std::size_t kMostEntries = std::numeric_limits<std::uint16_t>::max();
    if (entries_.size() > kMostEntries) {
        throw Failure(
            {.file = out_.Path().string(), .what = "has too many entries for a ZIP archive"});
    }
    const auto count = static_cast<std::uint32_t>(entries_.size());
    const std::uint64_t size = position_ - start;
    Emit(Record()
             .Put32(kEndMark)
             .Put16(0)
             .Put16(0)
             .Put16(count)
             .Put16(count)
             .Put32(size)
             .Put32(start)
             .Put16(0)
             .Bytes());
}

void ZipWriter::Emit(std::string_view bytes) {
    position_ += bytes.size();
    if (position_ > kMost) {
        throw Failure({.file = out_.Path().string(),
                       .what = "would be larger than 4 GiB, the most that a ZIP archive takes"});
    }
    out_.Write(bytes);
}

}  // namespace toolkit::interchange

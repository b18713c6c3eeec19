#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// Computes a SHA-256 digest block by block.
class Sha256 {
public:
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void Add(std::string_view block);

    /// The digest in lower-case hexadecimal digits. Call it once, at last.
    std::string Digest();

private:
    struct Context;

    std::unique_ptr<Context> context_;
};

/// The digest of a file's content, or why it cannot be read. Opens regular files only.
/// @param path  as the system's calls take it
std::variant<std::string, Problem> DigestOfFile(const std::string& path);

}  // namespace toolkit

#include "toolkit/media/Sha256.h"

#include <fmt/format.h>
#include <openssl/evp.h>

#include <array>
#include <new>

#include "toolkit/FileContent.h"

namespace toolkit {
namespace {

/// The library's functions fail only if memory runs out.
void Require(bool done) {
    if (!done) {
        throw std::bad_alloc();
    }
}

}  // namespace

struct Sha256::Context {
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> state{EVP_MD_CTX_new(),
                                                                  &EVP_MD_CTX_free};
};

Sha256::Sha256() : context_(std::make_unique<Context>()) {
    Require(context_->state != nullptr &&
            EVP_DigestInit_ex(context_->state.get(), EVP_sha256(), nullptr) == 1);
}

Sha256::~Sha256() = default;

void Sha256::Add(std::string_view block) {
    Require(EVP_DigestUpdate(context_->state.get(), block.data(), block.size()) == 1);
}

std::string Sha256::Digest() {
    std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
    unsigned size = 0;
    Require(EVP_DigestFinal_ex(context_->state.get(), bytes.data(), &size) == 1);
    return fmt::format("{:02x}", fmt::join(bytes.data(), bytes.data() + size, ""));
}

std::variant<std::string, Problem> DigestOfFile(const std::string& path) {
    FileBlocks blocks(path);
    Sha256 digest;
    for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
        digest.Add(block);
    }
    if (const auto& problem = blocks.Failure()) {
        return *problem;
    }
    return digest.Digest();
}

}  // namespace toolkit

#pragma once

#include <csignal>
#include <string>

namespace cli {

/// Removes a temporary file, or a folder with everything in it, if one of the signals that ask a
/// program to end comes; then they end it as ever. The one made last is to go first.
class RemovalAtSignal {
public:
    explicit RemovalAtSignal(std::string path);
    ~RemovalAtSignal();
    RemovalAtSignal(const RemovalAtSignal&) = delete;
    RemovalAtSignal& operator=(const RemovalAtSignal&) = delete;

private:
    /// Makes only calls that are allowed in a signal.
    static void RemoveAllAndEnd(int signal);

    std::string path_;
    const RemovalAtSignal* former_;
};

/// Lets those signals wait while something exists that they do not know yet.
class WithoutSignals {
public:
    WithoutSignals();
    ~WithoutSignals();
    WithoutSignals(const WithoutSignals&) = delete;
    WithoutSignals& operator=(const WithoutSignals&) = delete;

private:
    sigset_t before_;
};

/// Removes a file, or a folder with everything in it; stops at what cannot be removed.
void RemoveTree(const char* root);

}  // namespace cli

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <orvo/Diff.h>
#include <orvo/Session.h>

namespace test {

/// In samples.
inline constexpr std::int64_t kSecond = 48000;

/// Two tracks with clips and automation, a bus that both feed, effects, a send, a group, two files
/// and ports. Ids are such that none of a kind equals another.
orvo::Session SmallSession();

inline orvo::AudioTrack& Drums(orvo::Session& session) {
    return session.audioTracks[0];
}
inline orvo::AudioTrack& Bass(orvo::Session& session) {
    return session.audioTracks[1];
}

/// What is said of the changes.
std::vector<std::string> SentencesOf(const orvo::Session& before, const orvo::Session& after,
                                     const orvo::ChangeOptions& options = {});

}  // namespace test

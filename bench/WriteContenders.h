#pragma once

#include <optional>
#include <string>

#include "bench/AnswerTape.h"
#include "bench/BareWriter.h"
#include "bench/Contender.h"
#include "reference_host/Plugin.h"
#include "reference_host/model/Session.h"

namespace bench {

/// The writers of one session, and what each of them has ready before it writes: the bare one the
/// parts of the document, the static host its answers, the reference host the session. The paths in
/// a session file depend on its folder, so all write to one folder, each its own file. The plug-in
/// and a `XercesLibrary` must outlive this.
class WriteContenders {
public:
    /// @param file  the session, as the system's calls take it
    /// @param folder  where they write; it must be there
    /// @throws std::runtime_error if the session cannot be read or written
    WriteContenders(refhost::Plugin& plugin, const std::string& file, const std::string& folder);
    WriteContenders(const WriteContenders&) = delete;
    WriteContenders& operator=(const WriteContenders&) = delete;

    /// Makes ready what the contender of that name needs. It must not outlive this.
    Contender Make(const std::string& name);

    /// Where it writes to.
    std::string OutputOf(const std::string& name) const;

private:
    Contender MakeFloor();
    Contender MakeStaticHost();
    Contender MakeReferenceHost();

    refhost::Plugin& plugin_;
    std::string folder_;
    refhost::model::Session session_;
    std::optional<refhost::model::Session> copy_;  // for the next write
    std::optional<DocumentParts> parts_;
    std::optional<AnswerTape> answers_;
};

}  // namespace bench

#pragma once

#include <optional>
#include <string>

#include <orvo/Model.h>
#include "bench/AnswerTape.h"
#include "bench/BareWriter.h"
#include "bench/Contender.h"
#include "reference_host/Plugin.h"

namespace bench {

/// The writers of one session, with what each needs before it writes: the document's parts for the
/// bare writer, the answers for the static host, the session for the reference host. Each writes
/// its own file in the same folder, because the paths in a session file depend on the folder. The
/// plug-in and a `XercesLibrary` must outlive this object.
class WriteContenders {
public:
    /// @param file  the session, in the form of the system calls
    /// @param folder  where they write; it must exist
    /// @throws std::runtime_error if the session cannot be read or written
    WriteContenders(refhost::Plugin& plugin, const std::string& file, std::string folder);
    WriteContenders(const WriteContenders&) = delete;
    WriteContenders& operator=(const WriteContenders&) = delete;

    /// Prepares what the contender of that name needs. It must not outlive this object.
    Contender Make(const std::string& name);

    /// The file that the contender of that name writes.
    std::string OutputOf(const std::string& name) const;

private:
    Contender MakeFloor();
    Contender MakeCopy();
    Contender MakeStaticHost(const std::string& name, bool streamed);
    Contender MakeReferenceHost(const std::string& name, bool streamed);
    void UseStreamedSave(bool streamed) const;

    refhost::Plugin& plugin_;
    std::string folder_;
    orvo::Session session_;
    std::optional<DocumentParts> parts_;
    std::optional<AnswerTape> answers_;
    std::string bytes_;
};

}  // namespace bench

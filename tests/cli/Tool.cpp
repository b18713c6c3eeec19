#include "tests/cli/Tool.h"

#include <unistd.h>

#include <filesystem>

namespace test {

const char* const kSmallSession = R"xml(<?xml version="1.0" encoding="UTF-8"?>
<orvo version="1.5">
  <session sampleRate="48000" duration="180000" audioChannelType="stereo" bitDepth="24" appVersion="25.1"/>
  <files>
    <file id="1" absolutePath="/nowhere/here.wav" relativePath="here.wav" mediaHandler="Waveform Audio (WAV)"/>
    <file id="20" absolutePath="/nowhere/gone.wav"/>
  </files>
  <audioDevice inputID="Desk" outputID="">
    <inputPort id="1" name="Mic"/>
    <inputPort id="2" name="Line"/>
  </audioDevice>
</orvo>
)xml";

std::string ToolPath() {
    return std::filesystem::read_symlink("/proc/self/exe").replace_filename("orvo");
}

std::string IdlePluginPath() {
    const std::filesystem::path tool = ToolPath();
    return tool.parent_path().parent_path() / "lib/idle_plugin.so";
}

Outcome RunTool(std::vector<std::string> arguments, const TemporaryFolder& folder,
                const std::string& input) {
    arguments.insert(arguments.begin(), ToolPath());
    return Run(
        {.arguments = std::move(arguments), .input = input, .folder = folder.Path().string()});
}

Outcome RunToolUnprivileged(std::vector<std::string> arguments, const TemporaryFolder& folder) {
    arguments.insert(arguments.begin(), ToolPath());
    if (::geteuid() == 0) {
        // Drops capabilities instead of changing the user: root can still run a tool in a folder
        // that belongs to root.
        arguments.insert(arguments.begin(),
                         {"setpriv", "--bounding-set=-dac_override,-dac_read_search",
                          "--inh-caps=-dac_override,-dac_read_search"});
    }
    return Run({.arguments = std::move(arguments), .folder = folder.Path().string()});
}

void ToolTest::RunQuietly(std::vector<std::string> arguments) const {
    const Outcome outcome = RunTool(std::move(arguments), folder_);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output + outcome.errors, "");
}

bool ToolTest::Exists(const char* name) const {
    return std::filesystem::exists(folder_ / name);
}

}  // namespace test

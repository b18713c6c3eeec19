#!/usr/bin/env python3
"""Checks host/generate.py on small headers: what it makes of good ones, and that it refuses bad ones by file and line.

    generate_test.py GENERATOR
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

GENERATOR = sys.argv.pop()

OBJECT = """\
#pragma once

#include "platform/kelcore/Types.h"

/// What holds for all interfaces.
namespace tses {

/// What is counted.
struct IHostObject {
    /// Adds one reference.
    virtual void AddReference() = 0;
    /// Gives one reference back. Must not throw.
    virtual void Release() = 0;

protected:
    ~IHostObject() = default;
};

}  // namespace tses
"""


def header(*interfaces):
    return (
        '#pragma once\n\n#include "host/HostObject.h"\n\nnamespace tses {\n\n'
        + "\n".join(interfaces)
        + "\n}  // namespace tses\n"
    )


def interface(name, *operations, base="IHostObject"):
    lines = "".join(f"    {line}\n" for line in operations)
    return f"/// A thing.\nstruct {name} : {base} {{\n{lines}\nprotected:\n    ~{name}() = default;\n}};\n"


SESSION = interface(
    "IEditSession",
    "virtual void UnusedSlot3() = 0;",
    "/// A track. Null: the read fails.",
    "virtual IEditTrack* GetTrack(kelcore::uint32 id,",
    "                             const kelcore::char16* const* trackNames) = 0;",
)
TRACK = interface(
    "IEditTrack", "/// How loud; 0 to 1.5. The rest does not show.", "virtual void SetGain(double gain) = 0;"
)
PRIVATE = interface(
    "IEditTrackPrivate", "/// Its size.", "virtual bool GetSize(kelcore::int32& width) = 0;", base="IEditTrack"
)
GOOD = header("struct IEditTrack;\n", SESSION, TRACK, PRIVATE)


class Generator(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        (self.folder / "host").mkdir()

    def run_generator(self, headers, output, *options, target="made"):
        for name, text in {"HostObject.h": OBJECT, **headers}.items():
            (self.folder / "host" / name).write_text(text, "utf-8")
        command = [sys.executable, "-B", GENERATOR, output, *options, "--headers", "host", target]
        return subprocess.run(command, cwd=self.folder, capture_output=True, text=True, check=False)

    def made(self, output, headers=None):
        run = self.run_generator(headers or {"Session.h": GOOD}, output)
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        return (self.folder / "made").read_text("utf-8")

    def refusal(self, text, name="Bad.h"):
        run = self.run_generator({name: text}, "operations")
        self.assertEqual(run.returncode, 1)
        self.assertFalse((self.folder / "made").exists())
        return run.stderr.strip()


class GoodHeaders(Generator):
    def test_operations_are_listed_in_slot_order(self):
        rows = [line for line in self.made("operations").splitlines() if line.endswith(")") and line[0].isupper()]
        self.assertEqual(
            rows,
            [
                "INTERFACE(IHostObject, void)",
                "OPERATION(IHostObject, AddReference)",
                "OPERATION(IHostObject, Release)",
                "INTERFACE(IEditSession, IHostObject)",
                "BASE(EditSessionBase, IEditSession)",
                "UNUSED_SLOT(IEditSession, UnusedSlot3)",
                "OPERATION(IEditSession, GetTrack)",
                "INTERFACE(IEditTrack, IHostObject)",
                "OPERATION(IEditTrack, SetGain)",
                "INTERFACE(IEditTrackPrivate, IEditTrack)",
                "BASE(EditTrackBase, IEditTrackPrivate)",
                "OPERATION(IEditTrackPrivate, GetSize)",
            ],
        )

    def test_the_operations_of_a_session_leave_out_what_it_does_not_lead_to(self):
        alone = header(interface("IAlone", "/// Not reached.", "virtual void Call() = 0;"))
        text = self.made("session-operations", {"Session.h": GOOD, "Alone.h": alone})
        self.assertIn("OPERATION(IEditTrackPrivate, GetSize)", text)
        for name in ("IAlone", "IHostObject", "UnusedSlot3"):
            self.assertNotIn(name, text)

    def test_an_implementation_hands_on_every_argument(self):
        text = self.made("implementation")
        self.assertIn(
            "    IEditTrack* GetTrack(kelcore::uint32 id, const kelcore::char16* const* trackNames) final {\n"
            '        return static_cast<Object*>(this)->Answer("GetTrack", &IEditSession::GetTrack, id, trackNames);\n',
            text,
        )
        self.assertIn("struct WholeInterface<IEditTrack> {\n    using type = IEditTrackPrivate;\n", text)

    def test_the_implementation_of_a_private_interface_has_the_inherited_operations_first(self):
        text = self.made("implementation").partition("class Implementation<IEditTrackPrivate, Object>")[2]
        self.assertLess(text.index("&IEditTrack::SetGain, gain"), text.index("&IEditTrackPrivate::GetSize, width"))

    def test_a_base_gives_nothing_and_says_what_null_means(self):
        text = self.made("bases")
        self.assertIn(
            "class EditSessionBase : public Counted<IEditSession> {\npublic:\n"
            "    void UnusedSlot3() override {}\n"
            "    /// Null: the read fails.\n"
            "    IEditTrack* GetTrack(kelcore::uint32 /*id*/,\n"
            "                         const kelcore::char16* const* /*trackNames*/) override {\n"
            "        return nullptr;\n"
            "    }\n};\n",
            text,
        )
        self.assertIn("    bool GetSize(kelcore::int32& /*width*/) override { return false; }\n", text)
        self.assertNotIn("Counted<IEditTrack>", text)

    def test_slots_take_the_first_sentence_and_keep_the_prose(self):
        page = self.folder / "made"
        page.write_text("Prose.\n\n<!-- From here on host/generate.py writes this page. -->\nold\n", "utf-8")
        text = self.made("slots")
        self.assertTrue(text.startswith("Prose.\n"))
        self.assertNotIn("old", text)
        self.assertIn("| 3 | `void UnusedSlot3()` | Never called |\n| 4 | `IEditTrack* GetTrack(", text)
        self.assertIn("Continues IEditTrack.\n", text)
        self.assertIn("| 3 | `void SetGain(double gain)` | How loud; 0 to 1.5 |\n", text)
        self.assertIn("| 4 | `bool GetSize(int32& width)` | Its size |\n", text)
        self.assertEqual(self.run_generator({}, "slots", "--check").returncode, 0)
        page.write_text(text.replace("Its size", "Its height"), "utf-8")
        self.assertIn("is not what the headers say", self.run_generator({}, "slots", "--check").stderr)

    def test_what_is_up_to_date_is_not_written_again(self):
        self.made("operations")
        before = (self.folder / "made").stat().st_mtime_ns
        self.made("operations")
        self.assertEqual((self.folder / "made").stat().st_mtime_ns, before)


class BadHeaders(Generator):
    def test_bad_lines_are_refused(self):
        for line in (
            "virtual void Set(double gain);",
            "virtual void Set(double gain) const = 0;",
            "void Set(double gain);",
            "static int count;",
            "virtual void Set(std::string text) = 0;",
            "virtual void Set(double) = 0;",
            "virtual double& Get() = 0;",
            "virtual void Set(double gain = 0) = 0;",
            "virtual ~ITrack();",
        ):
            with self.subTest(line):
                refusal = self.refusal(header(interface("ITrack", line)))
                self.assertTrue(refusal.startswith("host/Bad.h:9: not understood"), refusal)

    def test_bad_surroundings_are_refused(self):
        for text, place in (
            (GOOD.replace("namespace tses", "namespace other", 1), 5),
            (GOOD.replace("#pragma once", "#define X"), 1),
            (GOOD.replace(" : IHostObject", " : public IHostObject", 1), 10),
            (GOOD.replace("~IEditSession", "virtual ~IEditSession"), 17),
            (GOOD.replace("~IEditSession", "~IEditTrack"), 17),
            (GOOD + "int more;\n", 39),
        ):
            with self.subTest(text):
                self.assertRegex(self.refusal(text), rf"^host/Bad\.h:{place}: not understood here: ")

    def test_a_bad_end_is_refused(self):
        self.assertRegex(self.refusal(GOOD.replace("}  // namespace tses\n", "")), "the header ends too early$")
        unended = header(interface("ITrack", "/// X.", "virtual void Set(double gain)"))
        self.assertRegex(self.refusal(unended), "^host/Bad.h:10: not understood here: virtual void Set")

    def test_bad_names_are_refused(self):
        operation = ("/// X.", "virtual void Set(double gain) = 0;")
        for interfaces, refusal in (
            ([interface("ITrack", *operation, *operation)], "host/Bad.h:12: ITrack has a second Set"),
            ([interface("ITrack", *operation)] * 2, "host/Bad.h:17: ITrack is declared twice"),
            ([interface("ITrack", *operation, base="IMissing")], "host/Bad.h:8: IMissing is declared nowhere"),
            (
                [interface("ITrack", "/// X.", "virtual IMissing* Get() = 0;")],
                "host/Bad.h:10: IMissing is declared nowhere",
            ),
            (
                [interface("ITrack", *operation), interface("ITrackMore", *operation, base="ITrack")],
                "host/Bad.h:17: what continues ITrack has to be named ITrackPrivate",
            ),
            ([interface("ITrack")], "host/Bad.h:12: ITrack has no operation"),
        ):
            with self.subTest(refusal):
                self.assertEqual(self.refusal(header(*interfaces)), refusal)

    def test_a_bad_unused_slot_is_refused(self):
        refusal = self.refusal(header(interface("ITrack", "virtual void UnusedSlot4() = 0;")))
        self.assertEqual(refusal, "host/Bad.h:9: UnusedSlot4 is slot 3")

    def test_an_operation_without_a_comment_is_refused(self):
        refusal = self.refusal(header(interface("ITrack", "virtual void Set(double gain) = 0;")))
        self.assertEqual(refusal, "host/Bad.h:9: Set has no comment")

    def test_an_interface_that_nothing_counts_is_refused(self):
        refusal = self.refusal(GOOD.replace("struct IEditTrack : IHostObject", "struct IEditTrack"))
        self.assertRegex(refusal, "IEditTrack does not derive from IHostObject$")

    def test_a_bad_page_is_refused(self):
        (self.folder / "made").write_text("Prose.\n", "utf-8")
        run = self.run_generator({"Session.h": GOOD}, "slots")
        self.assertEqual(run.returncode, 1)
        self.assertIn("the page has no line <!-- From here on", run.stderr)
        missing = self.run_generator({"Session.h": GOOD}, "slots", target="missing")
        self.assertEqual(missing.stderr, "missing: no such page\n")


if __name__ == "__main__":
    unittest.main()

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <orvo/Edit.h>
#include <orvo/Session.h>
#include "tests/plugin/RandomSession.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/toolkit/edit/XmlTree.h"

namespace {

/// What an edit shows of a document.
using Values = std::vector<std::pair<std::map<std::string, std::string>, std::string>>;

Values ValuesOf(const orvo::Edit& edit) {
    Values values(edit.ElementCount());
    for (std::size_t element = 0; element < values.size(); ++element) {
        for (const std::string& name : edit.AttributeNames(element)) {
            values[element].first[name] = edit.Attribute(element, name).value();
        }
        values[element].second = edit.Text(element);
    }
    return values;
}

std::string DrawText() {
    return *rc::gen::container<std::string>(rc::gen::elementOf(std::string("aZ09 <>&\"'\t\n\r;#]")))
                .as("ASCII") +
           *rc::gen::elementOf(std::vector<std::string>{"", "\u00E9", "\u0085\u2028", "\U0001F600",
                                                        "\x01", "]]>", "\uFFFE"});
}

class EditProperties : public testing::Test {
protected:
    std::filesystem::path File() const { return folder_ / "a.orvo"; }
    std::string Content() const { return test::ReadFile(File()); }

    void WriteRandomSession() const {
        RC_ASSERT(bool(orvo::WriteSession(test::DrawSession(), File())));
    }

    orvo::Edit Open() const {
        orvo::EditResult opened = orvo::OpenEdit(File());
        RC_ASSERT(bool(opened));
        return std::move(*opened.edit);
    }

    const test::TemporaryFolder folder_;
};

std::size_t DrawElement(const orvo::Edit& edit) {
    return *rc::gen::inRange<std::size_t>(0, edit.ElementCount()).as("element");
}

/// The attributes whose values may be anything: without a track's id, nothing can be read.
std::vector<std::string> FreeAttributes(const orvo::Edit& edit, std::size_t element) {
    std::vector<std::string> names = edit.AttributeNames(element);
    std::erase(names, "id");
    return names;
}

/// Changes an attribute that the element has, or adds one.
void DrawAttributeChange(orvo::Edit& edit, Values& expected) {
    const std::size_t element = DrawElement(edit);
    std::vector<std::string> names = FreeAttributes(edit, element);
    names.emplace_back("added");
    const std::string name = *rc::gen::elementOf(names);
    const std::string value = DrawText();
    if (!edit.SetAttribute(element, name, value)) {
        expected[element].first[name] = value;
    }
}

void DrawTextChange(orvo::Edit& edit, Values& expected) {
    const std::size_t element = DrawElement(edit);
    const std::string text = DrawText();
    if (!edit.SetText(element, text)) {
        expected[element].second = text;
    }
}

/// What expat says of a document that it can read, which is one of XML 1.0.
void CheckByExpat(const std::string& content, const Values& expected) {
    if (content.find("version=\"1.1\"") != content.npos) {
        return;
    }
    const auto tree = test::ReadTree(content);
    RC_ASSERT(tree.has_value());
    RC_ASSERT(tree->size() == expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        RC_ASSERT((*tree)[i].attributes == expected[i].first);
        const bool hasElements = expected[i].second.empty();
        RC_ASSERT(hasElements || (*tree)[i].text == expected[i].second);
    }
}

RC_GTEST_FIXTURE_PROP(EditProperties, AnyChangesChangeTheirValuesAndNothingElse, ()) {
    WriteRandomSession();
    const std::string before = Content();
    orvo::Edit edit = Open();
    Values expected = ValuesOf(edit);
    CheckByExpat(before, expected);
    const int count = *rc::gen::inRange(0, 12);
    for (int i = 0; i < count; ++i) {
        if (*rc::gen::arbitrary<bool>()) {
            DrawAttributeChange(edit, expected);
        } else {
            DrawTextChange(edit, expected);
        }
    }
    const std::vector<orvo::Replacement> replacements = edit.Replacements();
    RC_ASSERT(ValuesOf(edit) == expected);
    RC_ASSERT(bool(edit.Save(File())));

    const std::string after = Content();
    RC_ASSERT(ValuesOf(Open()) == expected);
    CheckByExpat(after, expected);
    RC_ASSERT(orvo::Apply(before, replacements) == after);
    RC_ASSERT(orvo::Apply(after, orvo::Inverse(replacements)) == before);
}

RC_GTEST_FIXTURE_PROP(EditProperties, TheFormerValuesGiveASavedFileBack, ()) {
    WriteRandomSession();
    const std::string before = Content();
    orvo::Edit edit = Open();
    const Values former = ValuesOf(edit);
    std::vector<std::pair<std::size_t, std::string>> changed;
    const int count = *rc::gen::inRange(1, 12);
    for (int i = 0; i < count; ++i) {
        const std::size_t element = DrawElement(edit);
        const std::vector<std::string> names = FreeAttributes(edit, element);
        if (!names.empty()) {
            changed.emplace_back(element, *rc::gen::elementOf(names));
            edit.SetAttribute(element, changed.back().second, DrawText());
        }
    }
    RC_ASSERT(bool(edit.Save(File())));

    orvo::Edit inverse = Open();
    for (const auto& [element, name] : changed) {
        RC_ASSERT(!inverse.SetAttribute(element, name, former[element].first.at(name)));
    }
    RC_ASSERT(bool(inverse.Save(File())));
    RC_ASSERT(Content() == before);
}

RC_GTEST_FIXTURE_PROP(EditProperties, AReadGivesTheChangedValues, ()) {
    WriteRandomSession();
    orvo::Session expected = orvo::ReadSession(File()).session;
    std::size_t count = 0;
    for (orvo::AudioTrack& track : expected.audioTracks) {
        for (orvo::AudioClip& clip : track.clips) {
            clip.name = "clip " + std::to_string(++count);
        }
    }
    orvo::Edit edit = Open();
    std::size_t found = 0;
    for (std::size_t element = 0; element < edit.ElementCount(); ++element) {
        if (edit.IsKnown(element) && edit.Name(element) == "audioClip") {
            RC_ASSERT(!edit.SetAttribute(element, "name", "clip " + std::to_string(++found)));
        }
    }
    RC_ASSERT(found == count);
    RC_ASSERT(bool(edit.Save(File())));
    RC_ASSERT(orvo::ReadSession(File()).session == expected);
}

}  // namespace

#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Message.h>
#include <orvo/Session.h>

/// Changes values in a session file and keeps every other byte of it: elements that this version
/// does not know, comments, layout, the encoding, and the version of the application that saved it.
/// `WriteSession`, in contrast, saves a file anew and keeps only what a `Session` holds.
///
///     orvo::EditResult opened = orvo::OpenEdit("song.orvo");
///     if (!opened) { ... opened.messages ... }
///     orvo::Edit& edit = *opened.edit;
///     for (std::size_t element = 0; element < edit.ElementCount(); ++element) {
///         if (edit.Name(element) == "audioClip") {
///             edit.SetAttribute(element, "name", "Take 2");
///         }
///     }
///     edit.Save("song.orvo");
///
/// Texts are UTF-8. Nothing but std::bad_alloc is thrown.
namespace orvo {

/// A change of the bytes of a file: at `offset`, `before` becomes `after`.
struct Replacement {
    std::uint64_t offset = 0;  ///< in the file as it was, in bytes
    std::string before{};
    std::string after{};

    friend bool operator==(const Replacement&, const Replacement&) = default;
};

/// What changes a file back. Their offsets count in the changed file.
/// @param replacements  in the order of their offsets, as from `Edit::Replacements`
ORVO_API std::vector<Replacement> Inverse(const std::vector<Replacement>& replacements);

/// Makes the changes in the content of a file. No value if it does not contain what they replace.
ORVO_API std::optional<std::string> Apply(std::string_view content,
                                          const std::vector<Replacement>& replacements);

struct EditResult;

/// Opens a session file for changes. What `ReadSession` refuses cannot be edited. Nor can an XML
/// 1.1 document with a character beyond ASCII in a tag outside a value.
ORVO_API EditResult OpenEdit(const std::filesystem::path& file);

/// A session file with changes that are not saved yet. One thread at a time may use an object.
///
/// Elements are numbered in the document's order from 0, which is the root. A name is looked up
/// as a read does it: without its prefix, and an attribute without a prefix goes before others.
/// Every number below must be less than `ElementCount()`.
class ORVO_API Edit {
public:
    Edit(Edit&&) noexcept;
    Edit& operator=(Edit&&) noexcept;
    ~Edit();

    std::size_t ElementCount() const;

    /// Without a prefix.
    std::string Name(std::size_t element) const;

    /// The number of the element around it; no value for the root.
    std::optional<std::size_t> Parent(std::size_t element) const;

    /// Whether a read looks at the element: the format knows it where it stands.
    bool IsKnown(std::size_t element) const;

    /// The attributes, in the order of the tag and then of the changes that added them, without
    /// prefixes and each once. Declarations of namespaces are none.
    std::vector<std::string> AttributeNames(std::size_t element) const;

    /// The value of an attribute, with changes made before; no value without such an attribute.
    std::optional<std::string> Attribute(std::size_t element, std::string_view name) const;

    /// The text directly in an element, with changes made before and as it stands there: with
    /// layout around it, and not decoded. Empty for an element that contains others.
    std::string Text(std::size_t element) const;

    /// Changes the value of an attribute, or adds the attribute behind the others. A value that is
    /// as before leaves even its spelling alone.
    /// @returns why nothing was changed: XML cannot carry the value in this file, the tag would be
    ///          longer than a read accepts, or the name does not consist of ASCII letters, digits,
    ///          ".", "-" and "_"
    std::optional<Message> SetAttribute(std::size_t element, std::string_view name,
                                        std::string_view value);

    /// Changes the text of an element. Comments in it stay, before or behind the text. A text in
    /// a CDATA section stays in one if a section can carry it.
    /// @returns why nothing was changed: XML cannot carry the text in this file, it is longer than
    ///          a read accepts, or the element contains others
    std::optional<Message> SetText(std::size_t element, std::string_view text);

    /// What a save changes, in the order of the file.
    std::vector<Replacement> Replacements() const;

    /// Saves the changed file, like `WriteSession` in that the target is replaced only once the new
    /// content is whole, and stays what it was after a failure. Relative media paths in the file
    /// are not adapted to another folder. Refuses to replace the file that was opened if another
    /// program has changed it since; call `OpenEdit` again. The object does not change: to go on
    /// with the saved file, open it.
    WriteResult Save(const std::filesystem::path& file) const;

private:
    friend EditResult OpenEdit(const std::filesystem::path& file);
    class Document;

    explicit Edit(std::unique_ptr<Document> document);

    std::unique_ptr<Document> document_;
};

struct EditResult {
    std::optional<Edit> edit{};
    std::vector<Message> messages{};  ///< why the file cannot be edited

    explicit operator bool() const { return edit.has_value(); }
};

}  // namespace orvo

#pragma once

#include <vector>

#include <orvo/EditorState.h>
#include "host/Properties.h"
#include "reference_host/Node.h"
#include "reference_host/nodes/KeyIndex.h"

namespace refhost {

class EditProperties final : public Face<tses::IEditProperties, std::vector<orvo::Property>> {
public:
    using Face::Face;

    /// Replaces the value of an existing key.
    void SetProperty(const kelcore::char16* key, const kelcore::char16* value) override {
        Value()[index_.FindOrAdd(Value(), kelcore::UTF16to8(key))].value = kelcore::UTF16to8(value);
    }

private:
    KeyIndex<&orvo::Property::key> index_;
};

class QueryProperties final : public Face<tses::IQueryProperties, std::vector<orvo::Property>> {
public:
    using Face::Face;

    kelcore::uint32 GetCount() override { return CountOf(Value()); }
    tses::IHostString* GetKey(kelcore::uint32 index) override {
        return GiveOut(Value().at(index).key);
    }
    tses::IHostString* GetValue(const kelcore::char16* key) override {
        const auto place = index_.Find(Value(), kelcore::UTF16to8(key));
        return place ? GiveOut(Value()[*place].value) : nullptr;
    }

private:
    KeyIndex<&orvo::Property::key> index_;
};

using PropertiesNode = TwoFacedNode<std::vector<orvo::Property>, EditProperties, QueryProperties>;

class EditClipProperties final : public Face<tses::IEditClipProperties, std::string> {
public:
    using Face::Face;

    void SetProperties(const kelcore::char16* text) override { Value() = kelcore::UTF16to8(text); }
};

class QueryClipProperties final : public Face<tses::IQueryClipProperties, std::string> {
public:
    using Face::Face;

    tses::IHostString* GetPropertiesText() override { return GiveOut(Value()); }
    bool IsEmpty() override { return Value().empty(); }
};

using ClipPropertiesNode = TwoFacedNode<std::string, EditClipProperties, QueryClipProperties>;

}  // namespace refhost

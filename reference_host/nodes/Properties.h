#pragma once

#include <vector>

#include "host/Properties.h"
#include "reference_host/Node.h"
#include "reference_host/model/EditorState.h"
#include "reference_host/nodes/KeyIndex.h"

namespace refhost {

class EditProperties final : public Face<tses::IEditProperties, std::vector<model::Property>> {
public:
    using Face::Face;

    /// Replaces the value of a key that is there.
    void SetProperty(const kelcore::char16* key, const kelcore::char16* value) override {
        Value()[index_.FindOrAdd(Value(), key)].value = value;
    }

private:
    KeyIndex<&model::Property::key> index_;
};

class QueryProperties final : public Face<tses::IQueryProperties, std::vector<model::Property>> {
public:
    using Face::Face;

    kelcore::uint32 GetCount() override { return CountOf(Value()); }
    tses::IHostString* GetKey(kelcore::uint32 index) override {
        return GiveOut(Value().at(index).key);
    }
    tses::IHostString* GetValue(const kelcore::char16* key) override {
        const auto place = index_.Find(Value(), key);
        return place ? GiveOut(Value()[*place].value) : nullptr;
    }

private:
    KeyIndex<&model::Property::key> index_;
};

using PropertiesNode = TwoFacedNode<std::vector<model::Property>, EditProperties, QueryProperties>;

class EditClipProperties final : public Face<tses::IEditClipProperties, std::u16string> {
public:
    using Face::Face;

    void SetProperties(const kelcore::char16* text) override { Value() = text; }
};

class QueryClipProperties final : public Face<tses::IQueryClipProperties, std::u16string> {
public:
    using Face::Face;

    tses::IHostString* GetPropertiesText() override { return GiveOut(Value()); }
    bool IsEmpty() override { return Value().empty(); }
};

using ClipPropertiesNode = TwoFacedNode<std::u16string, EditClipProperties, QueryClipProperties>;

}  // namespace refhost

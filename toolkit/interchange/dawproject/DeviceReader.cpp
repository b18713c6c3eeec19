#include "toolkit/interchange/dawproject/DeviceReader.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace toolkit::interchange::dawproject {
namespace {

using orvo::Component;
using orvo::Fidelity;

bool IsGuid(std::string_view text) {
    constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    if (text.size() == kForm.size() + 2 && text.front() == '{' && text.back() == '}') {
        text = text.substr(1, kForm.size());
    }
    return std::ranges::equal(text, kForm, [](char c, char form) {
        return form == 'x' ? std::isxdigit(static_cast<unsigned char>(c)) != 0 : c == form;
    });
}

bool IsSwitch(const pugi::xml_node& parameter) {
    return IsNamed(parameter, "BoolParameter") || IsNamed(parameter, "Enabled") ||
           IsNamed(parameter, "AutoMakeup");
}

class DeviceReader {
public:
    DeviceReader(const ProjectDocument& document, const EntryReader& readEntry, Targets& targets)
        : document_(document), readEntry_(readEntry), targets_(targets) {}

    orvo::EffectsSlot Read(const pugi::xml_node& device) {
        ReadIdentity(device);
        for (const pugi::xml_node& child : device.children()) {
            if (IsNamed(child, "Parameters")) {
                ReadParameters(child);
            } else if (IsNamed(child, "State")) {
                ReadState(child);
            } else if (IsNamed(child, "Enabled")) {
                slot_.bypassed = !IsTrue(child, "value", true);
            } else if (IsNamed(child, "Band")) {
                ReadBand(child);
            } else {
                ReadOwnParameter(child, child.name());
            }
        }
        slot_.component = std::move(effect_);
        return std::move(slot_);
    }

private:
    void ReadIdentity(const pugi::xml_node& device) {
        const char* const name = device.attribute("deviceName").value();
        effect_.name = *name != '\0' ? name : device.attribute("name").value();
        const std::string identifier = device.attribute("deviceID").value();
        (IsGuid(identifier) ? effect_.guid : effect_.componentId) = identifier;
        const std::string_view role = device.attribute("deviceRole").value();
        if (role == "instrument" || role == "noteFX") {
            document_.Report(Fidelity::Moved, device, "the device stands among the effects", role);
        }
    }

    void ReadParameters(const pugi::xml_node& parameters) {
        for (const pugi::xml_node& parameter : parameters.children()) {
            if (IsNamed(parameter, "TimeSignatureParameter")) {
                document_.Report(Fidelity::Lost, parameter, "an effect has numbers only");
            } else if (parameter.type() == pugi::node_element) {
                Add(parameter, parameter.attribute("name").value());
            }
        }
    }

    /// A parameter that only this kind of device has, in a unit of its own.
    void ReadOwnParameter(const pugi::xml_node& parameter, std::string name) {
        if (!parameter.attribute("value")) {
            return;
        }
        const std::string_view unit = parameter.attribute("unit").value();
        if (!unit.empty() && unit != "linear") {
            document_.Report(Fidelity::Guessed, parameter, "the value keeps its unit", unit);
        }
        Add(parameter, std::move(name));
    }

    void ReadBand(const pugi::xml_node& band) {
        ++bands_;
        const std::string name =
            fmt::format("Band {} ({})", bands_, band.attribute("type").value());
        for (const pugi::xml_node& parameter : band.children()) {
            ReadOwnParameter(parameter, fmt::format("{} {}", name, parameter.name()));
        }
    }

    void Add(const pugi::xml_node& element, std::string name) {
        orvo::Parameter& parameter = effect_.parameters[NumberFor(element)];
        parameter.name = std::move(name);
        const ValueScale scale = {};
        if (const pugi::xml_attribute value = element.attribute("value")) {
            if (const auto number = NumberOf(value.value()); number && !IsSwitch(element)) {
                parameter.value = scale.ValueOf(*number);
            } else {
                parameter.value = IsTrue(element, "value", false) ? 1.0F : 0.0F;
            }
        }
        if (const pugi::xml_attribute id = element.attribute("id")) {
            targets_.insert_or_assign(id.value(), Target{.parameter = &parameter, .scale = scale});
        }
    }

    /// Its own number, or the next one that is free.
    std::uint32_t NumberFor(const pugi::xml_node& element) {
        const auto own = NumberOf(element.attribute("parameterID").value());
        constexpr double kMost = 2147483647;
        if (own && *own >= 0 && *own <= kMost) {
            const auto number = static_cast<std::uint32_t>(*own);
            if (!effect_.parameters.contains(number)) {
                return number;
            }
        }
        if (own) {
            document_.Report(Fidelity::Approximated, element, "the parameter got another number",
                             element.attribute("parameterID").value());
        }
        while (effect_.parameters.contains(nextNumber_)) {
            ++nextNumber_;
        }
        return nextNumber_;
    }

    void ReadState(const pugi::xml_node& state) {
        const std::string path = state.attribute("path").value();
        const bool isExternal = IsTrue(state, "external", false);
        const std::optional<std::string> content = isExternal ? std::nullopt : readEntry_(path);
        if (!content) {
            document_.Report(Fidelity::Lost, state, "the state of the device is not in the file",
                             path);
            return;
        }
        effect_.presetChunk.assign(content->begin(), content->end());
    }

    const ProjectDocument& document_;
    const EntryReader& readEntry_;
    Targets& targets_;
    orvo::EffectsSlot slot_;
    Component effect_;
    std::uint32_t nextNumber_ = 0;
    int bands_ = 0;
};

}  // namespace

std::optional<orvo::EffectsRack> ReadDevices(const ProjectDocument& document,
                                             const pugi::xml_node& devices,
                                             const EntryReader& readEntry, Targets& targets) {
    orvo::EffectsRack rack;
    for (const pugi::xml_node& device : devices.children()) {
        if (device.type() == pugi::node_element) {
            orvo::EffectsSlot slot = DeviceReader(document, readEntry, targets).Read(device);
            slot.slotIndex = static_cast<std::uint32_t>(rack.slots.size());
            rack.slots.emplace_back(std::move(slot));
        }
    }
    return rack.slots.empty() ? std::nullopt : std::optional(std::move(rack));
}

}  // namespace toolkit::interchange::dawproject

#include "toolkit/interchange/dawproject/DeviceWriter.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>

#include "toolkit/interchange/dawproject/Controls.h"
#include "toolkit/interchange/dawproject/Entries.h"

namespace toolkit::interchange::dawproject {
namespace {

using orvo::Component;
using orvo::EffectsRack;
using orvo::EffectsSlot;
using orvo::Fidelity;

class DeviceWriter {
public:
    DeviceWriter(const Writing& writing, PlannedTrack& track, States& states)
        : writing_(writing), track_(track), states_(states) {}

    void Write() {
        const auto& rack = track_.audio->effectsRack;
        if (!rack && !track_.audio->eq) {
            return;
        }
        xml_.Open("Devices");
        if (rack) {
            WriteRack(*rack, track_.place / &orvo::AudioTrack::effectsRack);
        }
        if (track_.audio->eq) {
            WriteEqualiser(*track_.audio->eq, track_.place / &orvo::AudioTrack::eq);
        }
        xml_.Close();
    }

private:
    void WriteRack(const EffectsRack& rack, const ModelPath& place) {
        if (!rack.preFader) {
            Lose(place / &EffectsRack::preFader, "effects behind the fader have no place");
        }
        ReportLevel(rack.mix, 1, place / &EffectsRack::mix);
        ReportLevel(rack.input, 0, place / &EffectsRack::input);
        ReportLevel(rack.output, 0, place / &EffectsRack::output);
        for (std::size_t i = 0; i < rack.slots.size(); ++i) {
            if (rack.slots[i]) {
                WriteSlot(*rack.slots[i], place / &EffectsRack::slots / i);
            }
        }
    }

    /// @param usual  the value that changes nothing
    void ReportLevel(const std::optional<Component>& level, float usual, const ModelPath& place) {
        ReportControl(level, place, reporter_);
        if (!level) {
            return;
        }
        const auto value = level->parameters.find(0);
        if (value != level->parameters.end() &&
            (value->second.value.value_or(usual) != usual || value->second.automation)) {
            Lose(place, "the levels of a rack have no place",
                 fmt::format("{}", value->second.value.value_or(usual)));
        }
    }

    void WriteSlot(const EffectsSlot& slot, const ModelPath& place) {
        if (!slot.component) {
            reporter_.CountLost("empty slots");
            return;
        }
        reporter_.CountLost("empty slots", slot.slotIndex > written_ ? 1 : 0);
        if (slot.sideChainChannels != 0) {
            Lose(place / &EffectsSlot::sideChainChannels, "side chains have no place",
                 fmt::format("{}", slot.sideChainChannels));
        }
        if (!slot.busConfig.empty()) {
            Lose(place / &EffectsSlot::busConfig, "the layout of channels has no place",
                 slot.busConfig);
        }
        if (!slot.inputChannels.empty()) {
            Lose(place / &EffectsSlot::inputChannels, "the order of channels has no place");
        }
        if (!slot.outputChannels.empty()) {
            Lose(place / &EffectsSlot::outputChannels, "the order of channels has no place");
        }
        // In a slot, only the bypass counts.
        reporter_.CountLost("power switches in slots", slot.component->powered ? 0 : 1);
        WriteEffect(*slot.component, !slot.bypassed, place / &EffectsSlot::component);
    }

    void WriteEqualiser(const Component& equaliser, const ModelPath& place) {
        reporter_.Add(Fidelity::Moved, place, "the equaliser became the last effect");
        WriteEffect(equaliser, equaliser.powered, place);
    }

    void WriteEffect(const Component& effect, bool isEnabled, const ModelPath& place) {
        ReportEffect(effect, place, reporter_);
        const std::string id = fmt::format("{}d{}", track_.id, written_++);
        xml_.Open("BuiltinDevice").Attribute("id", id).Attribute("deviceName", effect.name);
        const std::string& identifier = effect.guid.empty() ? effect.componentId : effect.guid;
        if (!identifier.empty()) {
            xml_.Attribute("deviceID", identifier);
        }
        xml_.Attribute("deviceRole", "audioFX").Attribute("loaded", true);
        WriteParameters(effect, id, place);
        xml_.Open("Enabled").Attribute("id", id + "on").Attribute("value", isEnabled);
        xml_.Close();
        if (!effect.presetChunk.empty()) {
            const std::string entry = StateEntryOf(id);
            states_[entry] = &effect.presetChunk;
            xml_.Open("State").Attribute("path", entry);
            xml_.Close();
        }
        xml_.Close();
    }

    void WriteParameters(const Component& effect, const std::string& id, const ModelPath& place) {
        if (effect.parameters.empty()) {
            return;
        }
        xml_.Open("Parameters");
        for (const auto& [number, parameter] : effect.parameters) {
            const ModelPath where = place / &Component::parameters / number;
            if (number > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max())) {
                Lose(where, "parameters have numbers up to 2147483647");
            } else {
                WriteParameter(number, parameter, fmt::format("{}p{}", id, number), where);
            }
        }
        xml_.Close();
    }

    void WriteParameter(std::uint32_t number, const orvo::Parameter& parameter, std::string id,
                        const ModelPath& place) {
        xml_.Open("RealParameter").Attribute("id", id);
        WriteName(xml_, parameter.name);
        xml_.Attribute("parameterID", number).Attribute("unit", kLinear);
        if (parameter.value && !std::isnan(*parameter.value)) {
            xml_.Attribute("value", NumberText(*parameter.value));
        }
        xml_.Close();
        if (parameter.automation && !parameter.automation->keyframes.empty()) {
            track_.lanes.push_back(
                {.parameter = std::move(id),
                 .unit = kLinear,
                 .points = PointsOf(*parameter.automation, place / &orvo::Parameter::automation,
                                    reporter_)});
        }
    }

    void Lose(const ModelPath& place, std::string_view what, std::string_view value = {}) {
        reporter_.Add(Fidelity::Lost, place, what, value);
    }

    const Writing& writing_;
    XmlWriter& xml_ = writing_.xml;
    Reporter& reporter_ = writing_.job.reporter;
    PlannedTrack& track_;
    States& states_;
    std::uint32_t written_ = 0;
};

}  // namespace

void WriteDevices(const Writing& writing, PlannedTrack& track, States& states) {
    DeviceWriter(writing, track, states).Write();
}

}  // namespace toolkit::interchange::dawproject

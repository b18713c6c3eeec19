#include "plugin/elements/tracks/Writers.h"

#include "format/tracks/AudioDevice.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {

/// Without attributes, the host keeps both of its identifiers. With only one of the two, the other
/// identifier becomes empty.
void Serializer::Impl::StartAudioDevice(State state, const TagAttributes& attributes) {
    PushState(state);
    if (attributes.empty()) {
        return;
    }
    const auto device = ReadRecord<AudioDeviceRecord, kAudioDeviceRows>(attributes);
    session_->SetInputDeviceId(device.inputId.c_str());
    session_->SetOutputDeviceId(device.outputId.c_str());
}

void Serializer::Impl::StartInputPort(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto port = ReadRecord<PortRecord, kPortRows>(attributes);
    session_->AddInputPort(port.id, port.name.c_str());
}

void Serializer::Impl::StartOutputPort(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto port = ReadRecord<PortRecord, kPortRows>(attributes);
    session_->AddOutputPort(port.id, port.name.c_str());
}

// Writing

namespace {

bool WritePort(SessionXMLWriter& writer, std::u16string_view element, const PortRecord& port) {
    return writer.StartElement(element, ToAttributes<kPortRows>(port)) && writer.EndElement();
}

bool WriteInputPorts(SessionXMLWriter& writer, IQuerySession& session) {
    return ForEachItem(writer, session.GetInputPortCount(), [&](kelcore::uint32 index) {
        return WritePort(writer, names::inputPort,
                         {session.GetInputPortId(index), TextOf(session.GetInputPortName(index))});
    });
}

bool WriteOutputPorts(SessionXMLWriter& writer, IQuerySession& session) {
    return ForEachItem(writer, session.GetOutputPortCount(), [&](kelcore::uint32 index) {
        return WritePort(
            writer, names::outputPort,
            {session.GetOutputPortId(index), TextOf(session.GetOutputPortName(index))});
    });
}

}  // namespace

bool WriteAudioDevice(SessionXMLWriter& writer, const HostReference<IQuerySession>& session) {
    const AudioDeviceRecord device{TextOf(session->GetInputDeviceId()),
                                   TextOf(session->GetOutputDeviceId())};
    return writer.StartElement(names::audioDevice, ToAttributes<kAudioDeviceRows>(device)) &&
           WriteInputPorts(writer, *session) && WriteOutputPorts(writer, *session) &&
           writer.EndElement();
}

}  // namespace tses

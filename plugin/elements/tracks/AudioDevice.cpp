#include "plugin/elements/tracks/AudioDevice.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"

// The audio device that the session was made with, and the ports that track inputs and outputs
// name:
//
//     <audioDevice inputID="..." outputID="...">
//       <inputPort id="1" name="Mic"/> <outputPort id="1" name="Main L/R"/>
//     </audioDevice>
//
// Both identifiers are always written, also empty.

namespace tses {
namespace {

struct DeviceRecord {
    std::u16string inputId;
    std::u16string outputId;
};

struct PortRecord {
    kelcore::int32 id = 0;
    std::u16string name;
};

// Reading

constexpr Binding<DeviceRecord> kDeviceBindings[] = {
    {names::inputID, read::Text<&DeviceRecord::inputId>},
    {names::outputID, read::Text<&DeviceRecord::outputId>},
};

constexpr Binding<PortRecord> kPortBindings[] = {
    {names::id, read::Number<&PortRecord::id>},
    {names::name, read::Text<&PortRecord::name>},
};

PortRecord ReadPort(const TagAttributes& attributes) {
    PortRecord port;
    ReadAttributes<kPortBindings>(attributes, port);
    return port;
}

}  // namespace

/// Without any attribute, the host keeps both of its identifiers; with one, the other becomes
/// empty.
void Serializer::Impl::StartAudioDevice(State state, const TagAttributes& attributes) {
    PushState(state);
    if (attributes.empty()) {
        return;
    }
    DeviceRecord device;
    ReadAttributes<kDeviceBindings>(attributes, device);
    session_->SetInputDeviceId(device.inputId.c_str());
    session_->SetOutputDeviceId(device.outputId.c_str());
}

void Serializer::Impl::StartInputPort(State state, const TagAttributes& attributes) {
    PushState(state);
    const PortRecord port = ReadPort(attributes);
    session_->AddInputPort(port.id, port.name.c_str());
}

void Serializer::Impl::StartOutputPort(State state, const TagAttributes& attributes) {
    PushState(state);
    const PortRecord port = ReadPort(attributes);
    session_->AddOutputPort(port.id, port.name.c_str());
}

// Writing

namespace {

bool WritePort(SessionXMLWriter& writer, std::u16string_view element, const PortRecord& port) {
    const AttributeMap attributes = {{names::id, FormatSigned(port.id)}, {names::name, port.name}};
    return writer.StartElement(element, attributes) && writer.EndElement();
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
    const DeviceRecord device{TextOf(session->GetInputDeviceId()),
                              TextOf(session->GetOutputDeviceId())};
    const AttributeMap attributes = {{names::inputID, device.inputId},
                                     {names::outputID, device.outputId}};
    return writer.StartElement(names::audioDevice, attributes) &&
           WriteInputPorts(writer, *session) && WriteOutputPorts(writer, *session) &&
           writer.EndElement();
}

}  // namespace tses

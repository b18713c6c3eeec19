"""The effect of the elements of effects and clips; see differential_elements.py."""

import differential_states as states
from differential_values import (NONE, block, flag, real, real32, signed32, signed64, strict,
                                 tolerant, unsigned32, wrapped)

# One element represents every control; its place decides what it controls. By the state of the place: the
# owner, the operation for each keyword, and whether the operation receives the keyword.
CONTROLS = {
    states.TRACK_AUDIO_PARAMETERS: ("track", {"trackFader": "GetFaderComponent", "trackMute": "GetMuteComponent",
                   "trackPan": "GetPanComponent", "trackEQ": "GetEQComponent"}, True),
    states.SEND_SLOT: ("send_slot", {"sendComponent": "GetSendComponent", "sendPan": "GetPanComponent"}, True),
    states.EFFECTS_RACK: ("rack", {"rackMix": "GetMixComponent", "rackInput": "GetInputComponent",
                  "rackOutput": "GetOutputComponent"}, False),
    states.AUDIO_CLIP: ("clip", {"clipGain": "GetClipGainComponent", "clipMute": "GetClipMuteComponent",
                  "clipPan": "GetClipPanComponent"}, False),
}


def control_start(place):
    owner, operations, names_it = CONTROLS[place]

    def start(reader, given):
        keyword = given.get("id")
        if keyword in operations:
            arguments = (keyword,) if names_it else ()
            reader.component = reader.host(getattr(reader, owner), operations[keyword], *arguments)
        if keyword == "trackEQ" and place == states.TRACK_AUDIO_PARAMETERS:
            reader.eq_pending = True
        apply_component(reader, given)
    return start


def slot_component_start(reader, given):
    if reader.slot is not None:
        reader.component = reader.host(reader.slot, "GetComponent")
    apply_component(reader, given)


def apply_component(reader, given):
    reader.parameter_values = []
    reader.powered_applied = False
    if reader.component is None:
        return
    reader.host(reader.component, "SetComponentGuid", given.get("componentGuid", ""))
    reader.host(reader.component, "SetComponentID", given.get("componentID", ""))
    reader.host(reader.component, "SetName", given.get("name", ""))
    reader.host(reader.component, "SetPresetName", given.get("presetName", ""))
    if "powered" in given:
        reader.host(reader.component, "SetPowered", strict(given["powered"]))
        reader.powered_applied = True
    reader.host(reader.component, "SetEditorVisible", flag(given, "editorVisible"))
    reader.host(reader.component, "SetEditorRect", *(signed32(given.get("editor" + side), 0)
                                                     for side in ("Left", "Top", "Width", "Height")))


def component_end(reader):
    if reader.eq_pending and not reader.powered_applied and reader.parameter_values:
        reader.host(reader.component, "SetPowered", reader.parameter_values[-1] >= 0.5)
    reader.eq_pending = False
    reader.component = None


def rack_start(owner):
    def start(reader, given):
        reader.rack = reader.host(getattr(reader, owner), "GetEffectsRack")
        reader.host(reader.rack, "SetPreFader", flag(given, "preFader", True))
    return start


def slot_start(reader, given):
    reader.slot = reader.host(reader.rack, "AddSlot")
    reader.host(reader.slot, "SetSlotIndex", unsigned32(given.get("slotIndex"), NONE))
    reader.host(reader.slot, "SetBypassed", not flag(given, "powered", True))
    if "sideChainChannels" in given:
        reader.host(reader.slot, "SetSideChainChannels", unsigned32(given["sideChainChannels"], 0))


def parameter_start(reader, given):
    reader.parameter_index = unsigned32(given.get("index"), 0)
    value = real(given, "parameterValue", 0.0, real32)
    reader.host(reader.component, "SetParameterValue", reader.parameter_index, value)
    reader.host(reader.component, "SetParameterName", reader.parameter_index, given.get("name", ""))
    if flag(given, "safeDuringWrite"):
        reader.host(reader.component, "SetParameterSafeDuringWrite", reader.parameter_index, True)
    reader.parameter_values.append(value)


def set_block(reader, target, operation):
    content = block(reader.trimmed())
    if content:
        reader.host(target, operation, content)


def preset_chunk_end(reader):
    set_block(reader, reader.component, "SetPresetChunk")


def bus_config_end(reader):
    if reader.trimmed():
        reader.host(reader.slot, "SetBusConfig", reader.text)


def slot_map_start(reader, given):
    reader.map_is_input = given.get("direction") == "input"


def slot_channel_start(reader, given):
    if "index" in given:
        reader.host(reader.slot, "AddInputChannel" if reader.map_is_input else "AddOutputChannel",
                    signed32(given["index"], 0), signed32(given.get("sourceIndex"), 0))


def keyframes_start(reader, given):
    reader.lane = reader.host(reader.component, "GetParameterAutomation", reader.parameter_index)
    if given:
        reader.host(reader.lane, "SetEnableSplines", flag(given, "enableSplines", parse=tolerant))
        reader.host(reader.lane, "SetReadOnly", flag(given, "readOnly", parse=tolerant))


def keyframe_start(reader, given):
    reader.host(reader.lane, "AddKeyframe", real(given, "value", 0.0, real32),
                signed64(given.get("sampleOffset"), 0), given.get("type") == "hold",
                flag(given, "select", parse=tolerant))


def edit_parameter_start(owner):
    return lambda reader, given: reader.host(getattr(reader, owner), "SetEditParameter",
                                             unsigned32(given.get("slotIndex"), NONE),
                                             unsigned32(given.get("parameterIndex"), 0))


# Clips.

def begin_clip(reader, given):
    """A clip without name and hue keeps those of the previous clip."""
    reader.channel_map = {}
    reader.clip_name = given.get("name", reader.clip_name)
    reader.clip_hue = real(given, "hue", reader.clip_hue)
    return unsigned32(given.get("id"), NONE)


def place_clip(reader, clip, given):
    begin = signed64(given.get("sourceInPoint"), -1)
    end = signed64(given.get("sourceOutPoint"), -1)
    reader.host(clip, "SetSourceInPoint", begin)
    reader.host(clip, "SetDuration", wrapped(end - begin, 64))
    reader.host(clip, "SetStartPoint", signed64(given.get("startPoint"), -1))
    reader.host(clip, "SetHue", reader.clip_hue)
    reader.host(clip, "SetName", reader.clip_name)
    reader.host(clip, "SetSelected", flag(given, "select"))
    reader.host(clip, "SetLockedInTime", flag(given, "lockedInTime"))


def audio_clip_start(reader, given):
    clip = reader.clip = reader.host(reader.track, "CreateAudioClip", begin_clip(reader, given))
    reader.host(clip, "SetFileID", unsigned32(given.get("fileID"), NONE))
    reader.host(clip, "SetLooped", flag(given, "looped"))
    reader.host(clip, "SetOffline", flag(given, "offline"))
    reader.host(clip, "SetZOrder", signed32(given.get("zOrder"), 0))
    reader.host(clip, "SetCrossFadeHeadClipID", signed32(given.get("crossFadeHeadClipID"), -1))
    reader.host(clip, "SetCrossFadeTailClipID", signed32(given.get("crossFadeTailClipID"), -1))
    reader.host(clip, "SetClipAutoCrossfade", flag(given, "clipAutoCrossfade", True))
    place_clip(reader, clip, given)


def audio_clip_end(reader):
    for channel in sorted(reader.channel_map):
        reader.host(reader.clip, "SetChannelSource", channel, reader.channel_map[channel])
    reader.channel_map = {}
    reader.clip = None


def midi_clip_start(reader, given):
    clips = reader.host(reader.track, "GetMIDIClipList")
    reader.midi_clip = reader.host(clips, "CreateMIDIClip", begin_clip(reader, given))
    place_clip(reader, reader.midi_clip, given)


def midi_clip_end(reader):
    reader.midi_clip = None


def video_clip_start(reader, given):
    clip = reader.video_clip = reader.host(reader.video_track, "CreateVideoClip", begin_clip(reader, given))
    reader.host(clip, "SetFileID", unsigned32(given.get("fileID"), NONE))
    place_clip(reader, clip, given)
    reader.host(clip, "SetOffline", flag(given, "offline"))
    reader.host(clip, "SetZOrder", signed32(given.get("zOrder"), 0))


def video_clip_end(reader):
    reader.video_clip = None


def video_format_start(reader, given):
    video = reader.host(reader.video_clip, "GetVideoFormat")
    reader.host(video, "SetFrameTiming", signed64(given.get("timeScale"), 0),
                signed64(given.get("sampleSize"), 0))
    reader.host(video, "SetPixelType", signed32(given.get("pixelType"), 1) or 1)
    reader.host(video, "SetDimensions", signed32(given.get("width"), 0), signed32(given.get("height"), 0))
    reader.host(video, "SetPixelAspectRatio", unsigned32(given.get("parNumerator"), 0),
                unsigned32(given.get("parDenominator"), 1))
    reader.host(video, "SetFieldType", unsigned32(given.get("fieldType"), 0))


def clip_channel_start(reader, given):
    reader.channel_map.setdefault(unsigned32(given.get("index"), 0), signed32(given.get("sourceIndex"), 0))


def fade_start(operation):
    def start(reader, given):
        fade = reader.host(reader.clip, operation)
        reader.host(fade, "SetStartPoint", signed64(given.get("startPoint"), 0))
        reader.host(fade, "SetEndPoint", signed64(given.get("endPoint"), 0))
        reader.host(fade, "SetType", int(given.get("type", "log") != "log"))
        reader.host(fade, "SetShape", signed32(given.get("shape"), 0))
        reader.host(fade, "SetCrossFadeLinkType",
                    int(given.get("crossFadeLinkType", "linkedSymmetric") != "linkedSymmetric"))
    return start


def keyword_or_number(text, keywords):
    return keywords.index(text) if text in keywords else unsigned32(text, 0)


def stretch_start(reader, given):
    stretch = reader.host(reader.clip, "GetClipStretch")
    reader.host(stretch, "SetStretchMode",
                keyword_or_number(given.get("stretchMode"), ("off", "realtime", "rendered")))
    reader.host(stretch, "SetStretchType",
                keyword_or_number(given.get("stretchType"), ("normal", "solo", "varispeed")))
    reader.host(stretch, "SetStretchRatio", real(given, "stretchRatio", 1.0))
    reader.host(stretch, "SetPitchAdjustment", real(given, "pitchAdjustment", 0.0))
    reader.host(stretch, "SetStretchQuality",
                keyword_or_number(given.get("stretchQuality"), ("high", "medium", "low")))
    reader.host(stretch, "SetTransientSensitivity", signed32(given.get("transientSensitivity"), 40))
    reader.host(stretch, "SetAdaptiveWindowSize", signed32(given.get("adaptiveWindowSize"), 37))
    reader.host(stretch, "SetPreserveFormants", flag(given, "preserveFormants", True, tolerant))


def take_start(reader, given):
    reader.host(reader.clip, "AddTake", signed64(given.get("sourceInPoint"), 0))


def clip_properties_start(reader, given):
    if "properties" in given:
        reader.host(reader.host(reader.clip, "GetProperties"), "SetProperties", given["properties"])


def clip_group_start(reader, given):
    reader.group_name = ""
    reader.clip_group = reader.host(reader.session, "CreateClipGroup", unsigned32(given.get("id"), 0))
    reader.host(reader.clip_group, "SetHue", real(given, "hue", 0.0))


def clip_group_name_end(reader):
    reader.group_name = reader.trimmed()


def clip_group_end(reader):
    reader.host(reader.clip_group, "SetName", reader.group_name)


def item_start(reader, given):
    reader.host(reader.clip_group, "AddItem", unsigned32(given.get("trackID"), 0),
                unsigned32(given.get("clipID"), 0))


def midi_events_end(reader):
    set_block(reader, reader.midi_clip, "SetMIDIEvents")

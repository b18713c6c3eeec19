"""What the elements of effects and clips lead to; see differential_elements.py."""

from differential_values import (NONE, block, flag, real, real32, signed32, signed64, strict,
                                 tolerant, unsigned32, wrapped)

# One element carries every control; where it stands decides whose it is: the state of the place, whose
# they are, how each is asked for by its keyword, and whether the keyword is told.
CONTROLS = {
    24: ("track", {"trackFader": "GetFaderComponent", "trackMute": "GetMuteComponent",
                   "trackPan": "GetPanComponent", "trackEQ": "GetEQComponent"}, True),
    33: ("send_slot", {"sendComponent": "GetSendComponent", "sendPan": "GetPanComponent"}, True),
    25: ("rack", {"rackMix": "GetMixComponent", "rackInput": "GetInputComponent",
                  "rackOutput": "GetOutputComponent"}, False),
    13: ("clip", {"clipGain": "GetClipGainComponent", "clipMute": "GetClipMuteComponent",
                  "clipPan": "GetClipPanComponent"}, False),
}


def control_start(place):
    owner, operations, names_it = CONTROLS[place]

    def start(r, a):
        keyword = a.get("id")
        if keyword in operations:
            arguments = (keyword,) if names_it else ()
            r.component = r.host(getattr(r, owner), operations[keyword], *arguments)
        if keyword == "trackEQ" and place == 24:
            r.eq_pending = True
        apply_component(r, a)
    return start


def slot_component_start(r, a):
    if r.slot is not None:
        r.component = r.host(r.slot, "GetComponent")
    apply_component(r, a)


def apply_component(r, a):
    r.parameter_values = []
    r.powered_applied = False
    if r.component is None:
        return
    r.host(r.component, "SetComponentGuid", a.get("componentGuid", ""))
    r.host(r.component, "SetComponentID", a.get("componentID", ""))
    r.host(r.component, "SetName", a.get("name", ""))
    r.host(r.component, "SetPresetName", a.get("presetName", ""))
    if "powered" in a:
        r.host(r.component, "SetPowered", strict(a["powered"]))
        r.powered_applied = True
    r.host(r.component, "SetEditorVisible", flag(a, "editorVisible"))
    r.host(r.component, "SetEditorRect", *(signed32(a.get("editor" + side), 0)
                                           for side in ("Left", "Top", "Width", "Height")))


def component_end(r):
    if r.eq_pending and not r.powered_applied and r.parameter_values:
        r.host(r.component, "SetPowered", r.parameter_values[-1] >= 0.5)
    r.eq_pending = False
    r.component = None


def rack_start(owner):
    def start(r, a):
        r.rack = r.host(getattr(r, owner), "GetEffectsRack")
        r.host(r.rack, "SetPreFader", flag(a, "preFader", True))
    return start


def slot_start(r, a):
    r.slot = r.host(r.rack, "AddSlot")
    r.host(r.slot, "SetSlotIndex", unsigned32(a.get("slotIndex"), NONE))
    r.host(r.slot, "SetBypassed", not flag(a, "powered", True))
    if "sideChainChannels" in a:
        r.host(r.slot, "SetSideChainChannels", unsigned32(a["sideChainChannels"], 0))


def parameter_start(r, a):
    r.parameter_index = unsigned32(a.get("index"), 0)
    value = real(a, "parameterValue", 0.0, real32)
    r.host(r.component, "SetParameterValue", r.parameter_index, value)
    r.host(r.component, "SetParameterName", r.parameter_index, a.get("name", ""))
    if flag(a, "safeDuringWrite"):
        r.host(r.component, "SetParameterSafeDuringWrite", r.parameter_index, True)
    r.parameter_values.append(value)


def set_block(r, target, operation):
    content = block(r.trimmed())
    if content:
        r.host(target, operation, content)


def preset_chunk_end(r):
    set_block(r, r.component, "SetPresetChunk")


def bus_config_end(r):
    if r.trimmed():
        r.host(r.slot, "SetBusConfig", r.text)


def slot_map_start(r, a):
    r.map_is_input = a.get("direction") == "input"


def slot_channel_start(r, a):
    if "index" in a:
        r.host(r.slot, "AddInputChannel" if r.map_is_input else "AddOutputChannel",
               signed32(a["index"], 0), signed32(a.get("sourceIndex"), 0))


def keyframes_start(r, a):
    r.lane = r.host(r.component, "GetParameterAutomation", r.parameter_index)
    if a:
        r.host(r.lane, "SetEnableSplines", flag(a, "enableSplines", parse=tolerant))
        r.host(r.lane, "SetReadOnly", flag(a, "readOnly", parse=tolerant))


def keyframe_start(r, a):
    r.host(r.lane, "AddKeyframe", real(a, "value", 0.0, real32),
           signed64(a.get("sampleOffset"), 0), a.get("type") == "hold",
           flag(a, "select", parse=tolerant))


def edit_parameter_start(owner):
    return lambda r, a: r.host(getattr(r, owner), "SetEditParameter",
                               unsigned32(a.get("slotIndex"), NONE),
                               unsigned32(a.get("parameterIndex"), 0))


# Clips.

def begin_clip(r, a):
    """Name and hue stay those of the clip before where a clip has none."""
    r.channel_map = {}
    r.clip_name = a.get("name", r.clip_name)
    r.clip_hue = real(a, "hue", r.clip_hue)
    return unsigned32(a.get("id"), NONE)


def place_clip(r, clip, a):
    begin = signed64(a.get("sourceInPoint"), -1)
    end = signed64(a.get("sourceOutPoint"), -1)
    r.host(clip, "SetSourceInPoint", begin)
    r.host(clip, "SetDuration", wrapped(end - begin, 64))
    r.host(clip, "SetStartPoint", signed64(a.get("startPoint"), -1))
    r.host(clip, "SetHue", r.clip_hue)
    r.host(clip, "SetName", r.clip_name)
    r.host(clip, "SetSelected", flag(a, "select"))
    r.host(clip, "SetLockedInTime", flag(a, "lockedInTime"))


def audio_clip_start(r, a):
    clip = r.clip = r.host(r.track, "CreateAudioClip", begin_clip(r, a))
    r.host(clip, "SetFileID", unsigned32(a.get("fileID"), NONE))
    r.host(clip, "SetLooped", flag(a, "looped"))
    r.host(clip, "SetOffline", flag(a, "offline"))
    r.host(clip, "SetZOrder", signed32(a.get("zOrder"), 0))
    r.host(clip, "SetCrossFadeHeadClipID", signed32(a.get("crossFadeHeadClipID"), -1))
    r.host(clip, "SetCrossFadeTailClipID", signed32(a.get("crossFadeTailClipID"), -1))
    r.host(clip, "SetClipAutoCrossfade", flag(a, "clipAutoCrossfade", True))
    place_clip(r, clip, a)


def audio_clip_end(r):
    for channel in sorted(r.channel_map):
        r.host(r.clip, "SetChannelSource", channel, r.channel_map[channel])
    r.channel_map = {}
    r.clip = None


def midi_clip_start(r, a):
    clips = r.host(r.track, "GetMIDIClipList")
    r.midi_clip = r.host(clips, "CreateMIDIClip", begin_clip(r, a))
    place_clip(r, r.midi_clip, a)


def midi_clip_end(r):
    r.midi_clip = None


def video_clip_start(r, a):
    clip = r.video_clip = r.host(r.video_track, "CreateVideoClip", begin_clip(r, a))
    r.host(clip, "SetFileID", unsigned32(a.get("fileID"), NONE))
    place_clip(r, clip, a)
    r.host(clip, "SetOffline", flag(a, "offline"))
    r.host(clip, "SetZOrder", signed32(a.get("zOrder"), 0))


def video_clip_end(r):
    r.video_clip = None


def video_format_start(r, a):
    video = r.host(r.video_clip, "GetVideoFormat")
    r.host(video, "SetFrameTiming", signed64(a.get("timeScale"), 0),
           signed64(a.get("sampleSize"), 0))
    r.host(video, "SetPixelType", signed32(a.get("pixelType"), 1) or 1)
    r.host(video, "SetDimensions", signed32(a.get("width"), 0), signed32(a.get("height"), 0))
    r.host(video, "SetPixelAspectRatio", unsigned32(a.get("parNumerator"), 0),
           unsigned32(a.get("parDenominator"), 1))
    r.host(video, "SetFieldType", unsigned32(a.get("fieldType"), 0))


def clip_channel_start(r, a):
    r.channel_map.setdefault(unsigned32(a.get("index"), 0), signed32(a.get("sourceIndex"), 0))


def fade_start(operation):
    def start(r, a):
        fade = r.host(r.clip, operation)
        r.host(fade, "SetStartPoint", signed64(a.get("startPoint"), 0))
        r.host(fade, "SetEndPoint", signed64(a.get("endPoint"), 0))
        r.host(fade, "SetType", int(a.get("type", "log") != "log"))
        r.host(fade, "SetShape", signed32(a.get("shape"), 0))
        r.host(fade, "SetCrossFadeLinkType",
               int(a.get("crossFadeLinkType", "linkedSymmetric") != "linkedSymmetric"))
    return start


def keyword_or_number(text, keywords):
    return keywords.index(text) if text in keywords else unsigned32(text, 0)


def stretch_start(r, a):
    stretch = r.host(r.clip, "GetClipStretch")
    r.host(stretch, "SetStretchMode",
           keyword_or_number(a.get("stretchMode"), ("off", "realtime", "rendered")))
    r.host(stretch, "SetStretchType",
           keyword_or_number(a.get("stretchType"), ("normal", "solo", "varispeed")))
    r.host(stretch, "SetStretchRatio", real(a, "stretchRatio", 1.0))
    r.host(stretch, "SetPitchAdjustment", real(a, "pitchAdjustment", 0.0))
    r.host(stretch, "SetStretchQuality",
           keyword_or_number(a.get("stretchQuality"), ("high", "medium", "low")))
    r.host(stretch, "SetTransientSensitivity", signed32(a.get("transientSensitivity"), 40))
    r.host(stretch, "SetAdaptiveWindowSize", signed32(a.get("adaptiveWindowSize"), 37))
    r.host(stretch, "SetPreserveFormants", flag(a, "preserveFormants", True, tolerant))


def take_start(r, a):
    r.host(r.clip, "AddTake", signed64(a.get("sourceInPoint"), 0))


def clip_properties_start(r, a):
    if "properties" in a:
        r.host(r.host(r.clip, "GetProperties"), "SetProperties", a["properties"])


def clip_group_start(r, a):
    r.group_name = ""
    r.clip_group = r.host(r.session, "CreateClipGroup", unsigned32(a.get("id"), 0))
    r.host(r.clip_group, "SetHue", real(a, "hue", 0.0))


def clip_group_name_end(r):
    r.group_name = r.trimmed()


def clip_group_end(r):
    r.host(r.clip_group, "SetName", r.group_name)


def item_start(r, a):
    r.host(r.clip_group, "AddItem", unsigned32(a.get("trackID"), 0), unsigned32(a.get("clipID"), 0))


def midi_events_end(r):
    set_block(r, r.midi_clip, "SetMIDIEvents")

"""The elements of a session: where each one may appear, and the effects of its start and its end.

A handler gets the reader and, at a start tag, the attributes. `reader.host(object, operation, ...)`
calls the host; a call on a missing object does nothing.
"""

import os

import differential_content as content
import differential_states as states
from differential_values import (NONE, Stop, exact_real32, flag, real, seen_from, signed32,
                                 signed64, strict, tolerant, unsigned32)

HANDLERS = {
    "Waveform Audio (WAV)": "kel.importer.wave", "Broadcast Wave (BWF, RF64)": "kel.importer.rf64",
    "Audio Interchange File (AIFF)": "kel.importer.aiff",
    "Free Lossless Audio Codec (FLAC)": "kel.importer.flac", "Ogg Vorbis": "kel.importer.vorbis",
    "Ogg Opus": "kel.importer.opus", "MPEG Audio Layer III (MP3)": "kel.importer.mp3",
    "Advanced Audio Coding (AAC, M4A)": "kel.importer.aac",
    "Core Audio Format (CAF)": "kel.importer.caf", "QuickTime Movie (MOV)": "kel.importer.quicktime",
    "MPEG-4 Movie (MP4)": "kel.importer.mpeg4", "Matroska (MKV)": "kel.importer.matroska",
    "Standard MIDI File (MID)": "kel.importer.midi",
}
CHANNELS = {"mono": 1, "stereo": 2, "fivePointOne": 6}
SOUND_SETS = ("african1", "african2", "beeps", "cymbals", "kit", "latin1", "latin2", "latin3",
              "sticks", "tabla")
BEATS = ("none", "downBeat", "upBeat", "subdivision")
TIME_FORMATS = {"timeFormatDecimal": 0, "timeFormatSamples": 1, "timeFormatTimeCode": 2,
                "timeFormatBarsAndBeats": 6}


# The document.

def session_start(reader, given):
    if given.get("audioChannelType") in CHANNELS:
        reader.host(reader.session, "SetChannelCount", CHANNELS[given["audioChannelType"]])
    reader.app_version = given.get("appVersion", "4.0")
    reader.host(reader.session, "SetSampleRate", signed32(given.get("sampleRate"), 48000) & NONE)
    reader.host(reader.session, "SetDuration", signed64(given.get("duration"), 0))
    reader.host(reader.session, "SetBitDepth", unsigned32(given.get("bitDepth"), 32))
    reader.host(reader.session, "SetFormatDescription",
                f"Vantor Tembra {reader.app_version} Multitrack Session")


def session_end(reader):
    reader.host(reader.session, "SetVersionDependentValue",
                reader.cti_position if reader.app_version == "4.0" else reader.selection_start)
    reader.advance()


def leads_to_file(path):
    """A folder is not a file."""
    return os.path.exists(path) and not os.path.isdir(path)


def file_start(reader, given):
    path = given.get("absolutePath", "")
    if "relativePath" in given:
        resolved = seen_from(given["relativePath"], reader.location)
        if not path or (not leads_to_file(path) and leads_to_file(resolved)):
            path = resolved
    handler = given.get("mediaHandlerID", HANDLERS.get(given.get("mediaHandler"), ""))
    file = reader.host(reader.session, "GetFile", unsigned32(given.get("id"), NONE))
    reader.host(file, "SetPath", path)
    for operation, text in (("SetMediaHandler", handler), ("SetRecoveryId", given.get("recoveryID")),
                            ("SetImporterPrivateSettings", given.get("importerPrivateSettings"))):
        if text:
            reader.host(file, operation, text)


def audio_device_start(reader, given):
    if given:
        reader.host(reader.session, "SetInputDeviceId", given.get("inputID", ""))
        reader.host(reader.session, "SetOutputDeviceId", given.get("outputID", ""))


def port_start(operation):
    return lambda reader, given: reader.host(reader.session, operation, signed32(given.get("id"), 0),
                                             given.get("name", ""))


# Tracks.

def new_pending_track(given):
    return {"name": "", "height": 0, "hue": -1.0, "minimized": False, "channels": 0, "solo": False,
            "recordArmed": False, "monitoring": False, "soloSafe": False, "outputTrack": -1,
            "input": -1, "hardwareOutput": -1, "automationMode": 1,
            "id": unsigned32(given.get("id"), NONE), "index": unsigned32(given.get("index"), 0)}


def track_start(kind):
    def start(reader, given):
        track = reader.pending_track = new_pending_track(given)
        reader.eq_pending = False
        if kind == 4:
            reader.track = reader.host(reader.host(reader.session, "GetMetronomeInfo"), "GetTrack")
        else:
            reader.track = reader.host(reader.session, "GetAudioTrack", track["id"])
        if reader.track is None:
            raise Stop("Invalid Track Id")
        reader.host(reader.track, "SetIndex", track["index"])
        reader.host(reader.track, "SetKind", kind)
        reader.host(reader.track, "SetSelected", flag(given, "select"))
        reader.host(reader.track, "SetAutomationLaneOpenState", flag(given, "automationLaneOpenState"))
        reader.host(reader.track, "SetVisible", flag(given, "visible", True))
        reader.host(reader.track, "SetPhaseInverted", flag(given, "phaseInverted"))
        reader.host(reader.track, "SetPreRendered", flag(given, "preRendered"))
        reader.host(reader.track, "SetSumToMono", flag(given, "sumtomono"))
        if given.get("preRenderedFile"):
            reader.host(reader.track, "SetPreRenderedFile", given["preRenderedFile"])
        if kind == 5:
            instrument = reader.host(reader.track, "GetInstrument")
            reader.host(instrument, "SetMidiIn", given.get("midiIn", ""))
            reader.host(instrument, "SetMidiAll", flag(given, "midiAll"))
    return start


def video_track_start(reader, given):
    track = reader.pending_track = new_pending_track(given)
    reader.eq_pending = False
    reader.video_track = reader.host(reader.session, "GetVideoTrack", track["id"])
    reader.host(reader.video_track, "SetIndex", track["index"])
    reader.host(reader.video_track, "SetSelected", flag(given, "select"))


def track_parameters_start(reader, given):
    track = reader.pending_track
    track["height"] = signed32(given.get("trackHeight"), track["height"])
    track["hue"] = real(given, "trackHue", track["hue"])
    track["minimized"] = flag(given, "trackMinimized", track["minimized"])


def track_name_end(reader):
    reader.pending_track["name"] = reader.trimmed()


def track_parameters_end(member):
    def end(reader):
        track, target = reader.pending_track, getattr(reader, member)
        reader.host(target, "SetName", track["name"])
        reader.host(target, "SetHeight", track["height"])
        reader.host(target, "SetHue", track["hue"])
        reader.host(target, "SetMinimized", track["minimized"])
    return end


def audio_parameters_start(reader, given):
    track = reader.pending_track
    track["channels"] = CHANNELS.get(given.get("audioChannelType"), track["channels"])
    for name in ("solo", "recordArmed", "monitoring", "soloSafe"):
        track[name] = flag(given, name, track[name], tolerant)
    track["automationMode"] = signed32(given.get("automationMode"), track["automationMode"])


def audio_parameters_end(reader):
    track = reader.pending_track
    for operation, value in (
            ("SetAudioChannelType", "channels"), ("SetSolo", "solo"),
            ("SetRecordArmed", "recordArmed"), ("SetMonitoring", "monitoring"),
            ("SetSoloSafe", "soloSafe"), ("SetOutputTrack", "outputTrack"), ("SetInput", "input"),
            ("SetHardwareOutput", "hardwareOutput"), ("SetAutomationMode", "automationMode")):
        reader.host(reader.track, operation, track[value])


def track_output_start(reader, given):
    reader.pending_track["outputTrack"] = reader.pending_track["hardwareOutput"] = -1
    target = "outputTrack" if given.get("type") == "trackID" else "hardwareOutput"
    reader.pending_track[target] = signed32(given.get("outputID"), -1)


def track_input_start(reader, given):
    reader.pending_track["input"] = signed32(given.get("inputID"), -1)


def send_list_start(reader, given):
    reader.send_list = reader.host(reader.track, "GetSendList")


def send_slot_start(reader, given):
    if "slotIndex" not in given:
        return
    reader.send_slot = reader.host(reader.send_list, "AddSlot")
    reader.host(reader.send_slot, "SetSlotIndex", unsigned32(given["slotIndex"], 0))
    if "sendOutputID" in given:
        reader.host(reader.send_slot, "SetSendOutputId", signed32(given["sendOutputID"], 0))
    if "preFader" in given:
        reader.host(reader.send_slot, "SetPreFader", strict(given["preFader"]))
    if "destCompIndex" in given:
        reader.host(reader.send_slot, "SetDestCompIndex", signed32(given["destCompIndex"], 0))


def presets_start(reader, given):
    reader.presets = []


def preset_start(reader, given):
    reader.presets.append((unsigned32(given.get("id"), 0), given.get("name", ""), []))


def visibility_start(reader, given):
    if reader.presets:
        reader.presets[-1][2].append((unsigned32(given.get("id"), 0),
                                      exact_real32(given.get("trackHeight"), 0.0),
                                      flag(given, "trackMinimized")))


def presets_end(reader):
    for number, name, tracks in reader.presets:
        preset = reader.host(reader.session, "CreateTrackVisibilityPreset")
        reader.host(preset, "SetId", number)
        reader.host(preset, "SetName", name)
        for track in tracks:
            reader.host(preset, "AddTrack", *track)
    reader.presets = []


# The metronome and the editor's state.

def metronome_start(reader, given):
    reader.metronome = reader.host(reader.session, "GetMetronomeInfo")
    reader.host(reader.metronome, "SetEnabled", flag(given, "enabled"))
    sounds = given.get("soundSet")
    reader.host(reader.metronome, "SetSoundSet", SOUND_SETS.index(sounds) if sounds in SOUND_SETS else 8)
    pattern = [BEATS.index(beat) for beat in given.get("pattern", "").split(" ") if beat in BEATS]
    if pattern:
        reader.host(reader.metronome, "SetPattern", pattern)


def global_track_info_start(reader, given):
    reader.global_track_info = reader.host(reader.metronome, "GetGlobalTrackInfo")
    for name, operation in (("timeSigVisible", "SetTimeSigVisible"),
                            ("keySigVisible", "SetKeySigVisible"),
                            ("tempoVisible", "SetTempoVisible")):
        if name in given:
            reader.host(reader.global_track_info, operation, strict(given[name]))


def global_events_end(operation):
    return lambda reader: content.set_block(reader, reader.global_track_info, operation)


def session_state_start(reader, given):
    reader.cti_position = signed64(given.get("ctiPosition"), 0)
    reader.host(reader.session, "SetCtiPosition", reader.cti_position)
    reader.host(reader.session, "SetSmpteStart", signed64(given.get("smpteStart"), 0))


def selection_start(reader, given):
    reader.selection_start = signed64(given.get("selectionStart"), 0)
    reader.host(reader.session, "SetSelection", reader.selection_start,
                signed64(given.get("selectionDuration"), 0))


def view_start(reader, given):
    reader.host(reader.session, "SetViewState", signed64(given.get("horizontalViewStart"), 0),
                signed64(given.get("horizontalViewDuration"), 0),
                signed32(given.get("trackControlsWidth"), 0),
                signed32(given.get("verticalScrollOffset"), 0))


def time_format_start(reader, given):
    shown = TIME_FORMATS.get(given.get("timeFormat"), 0)
    rate = signed32(given.get("timeCodeFrameRate"), 0)
    ntsc = flag(given, "timeCodeNTSC", parse=tolerant)
    drop = flag(given, "timeCodeDropFrame", parse=tolerant)
    if shown == 2 and ntsc:
        if rate == 24:
            shown = 14
        elif rate == 60:
            shown = 13 if drop else 12
        else:
            shown, rate = 4 if drop else 3, 30
    reader.host(reader.session, "SetTimeFormat", shown, rate, ntsc, drop,
                signed32(given.get("customFrameRate"), 0))
    reader.host(reader.session, "SetLinkToDefaultTimeSettings",
                flag(given, "linkToDefaultTimeSettings", True, tolerant))
    reader.host(reader.session, "SetMusicalTime", real(given, "beatsPerMinute", 0.0),
                *(signed32(given.get(name), 0) for name in ("beatsPerBar", "noteLength", "subdivisions")))


def mixing_options_start(reader, given):
    reader.host(reader.session, "SetPanMode", flag(given, "defaultPanModeLogarithmic", parse=tolerant),
                real(given, "panPower", -3.0))
    reader.host(reader.session, "SetPlayOverlappingClips",
                flag(given, "playOverlappingClips", parse=tolerant))


def properties_start(reader, given):
    reader.properties = reader.host(reader.session, "GetProperties")


def property_start(reader, given):
    reader.property_key = given.get("key", "")


def property_end(reader):
    reader.host(reader.properties, "SetProperty", reader.property_key, reader.trimmed())


def xmp_end(reader):
    reader.host(reader.session, "SetXmpMetadata", reader.trimmed())
    reader.advance()


# The table: (name, states in which the element may appear, own state, start, end).

class Row:
    def __init__(self, state, start, end):
        self.state = state
        self.met = False  # whether any document contained it
        self.start = start
        self.end = end


AUDIO_TRACKS = (states.MASTER_TRACK, states.BUS_TRACK, states.AUDIO_TRACK, states.INSTRUMENT_TRACK, states.METRONOME_TRACK)


def advance(reader):
    reader.advance()


TABLE = [
    ("session", (states.ORVO,), states.SESSION, session_start, session_end),
    ("files", (states.ORVO,), states.FILES, None, advance),
    ("file", (states.FILES,), states.FILE, file_start, None),
    ("audioDevice", (states.ORVO,), states.AUDIO_DEVICE, audio_device_start, advance),
    ("inputPort", (states.AUDIO_DEVICE,), states.AUDIO_PORT, port_start("AddInputPort"), None),
    ("outputPort", (states.AUDIO_DEVICE,), states.AUDIO_PORT, port_start("AddOutputPort"), None),
    ("name", (states.SESSION,), states.NAME, None, None),
    ("tracks", (states.SESSION,), states.TRACKS, None, advance),
    ("masterTrack", (states.TRACKS,), states.MASTER_TRACK, track_start(3), None),
    ("audioTrack", (states.TRACKS,), states.AUDIO_TRACK, track_start(1), None),
    ("instrumentTrack", (states.TRACKS,), states.INSTRUMENT_TRACK, track_start(5), None),
    ("busTrack", (states.TRACKS,), states.BUS_TRACK, track_start(2), None),
    ("videoTrack", (states.TRACKS,), states.VIDEO_TRACK, video_track_start, None),
    ("metronomeTrack", (states.METRONOME,), states.METRONOME_TRACK, track_start(4), None),
    ("trackParameters", AUDIO_TRACKS, states.TRACK_PARAMETERS, track_parameters_start, track_parameters_end("track")),
    ("trackParameters", (states.VIDEO_TRACK,), states.TRACK_PARAMETERS, track_parameters_start, track_parameters_end("video_track")),
    ("name", (states.TRACK_PARAMETERS,), states.NAME, None, track_name_end),
    ("trackAudioParameters", AUDIO_TRACKS, states.TRACK_AUDIO_PARAMETERS, audio_parameters_start, audio_parameters_end),
    ("trackInput", (states.TRACK_AUDIO_PARAMETERS,), states.TRACK_INPUT, track_input_start, None),
    ("trackOutput", (states.TRACK_AUDIO_PARAMETERS,), states.TRACK_OUTPUT, track_output_start, None),
    ("trackPanner", (states.TRACK_AUDIO_PARAMETERS,), states.TRACK_PANNER, None, None),
    *((f"fivePointOne{channel}", (states.TRACK_PANNER,), states.FIVE_POINT_ONE_LEFT + place, None, None)
      for place, channel in enumerate(("Left", "Right", "Center", "LeftSurround", "RightSurround", "LFE"))),
    *(("component", (place,), states.COMPONENT, content.control_start(place), content.component_end)
      for place in content.CONTROLS),
    ("sendList", (states.BUS_TRACK, states.AUDIO_TRACK, states.INSTRUMENT_TRACK, states.METRONOME_TRACK), states.SEND_LIST, send_list_start, None),
    ("sendSlot", (states.SEND_LIST,), states.SEND_SLOT, send_slot_start, None),
    ("effectsRack", AUDIO_TRACKS, states.EFFECTS_RACK, content.rack_start("track"), None),
    ("effectsRack", (states.AUDIO_CLIP,), states.EFFECTS_RACK, content.rack_start("clip"), None),
    ("slot", (states.EFFECTS_RACK,), states.SLOT, content.slot_start, None),
    ("component", (states.SLOT,), states.SLOT_COMPONENT, content.slot_component_start, content.component_end),
    ("presetChunkData", (states.SLOT_COMPONENT,), states.PRESET_CHUNK_DATA, None, content.preset_chunk_end),
    ("parameter", (states.COMPONENT, states.SLOT_COMPONENT), states.PARAMETER, content.parameter_start, None),
    ("parameterKeyframes", (states.PARAMETER,), states.PARAMETER_KEYFRAMES, content.keyframes_start, None),
    ("parameterKeyframe", (states.PARAMETER_KEYFRAMES,), states.PARAMETER_KEYFRAME, content.keyframe_start, None),
    ("channelMap", (states.SLOT_COMPONENT,), states.SLOT_CHANNEL_MAP, content.slot_map_start, None),
    ("channel", (states.SLOT_CHANNEL_MAP,), states.SLOT_CHANNEL, content.slot_channel_start, None),
    ("busConfig", (states.SLOT_COMPONENT,), states.BUS_CONFIG, None, content.bus_config_end),
    ("editParameter", AUDIO_TRACKS, states.EDIT_PARAMETER, content.edit_parameter_start("track"), None),
    ("clip", (states.AUDIO_TRACK,), states.AUDIO_CLIP, content.audio_clip_start, content.audio_clip_end),
    ("audioClip", (states.AUDIO_TRACK,), states.AUDIO_CLIP, content.audio_clip_start, content.audio_clip_end),
    ("midiClip", (states.INSTRUMENT_TRACK,), states.MIDI_CLIP, content.midi_clip_start, content.midi_clip_end),
    ("midiEvents", (states.MIDI_CLIP,), states.MIDI_EVENTS, None, content.midi_events_end),
    ("channelMap", (states.AUDIO_CLIP,), states.CLIP_CHANNEL_MAP, None, None),
    ("channel", (states.CLIP_CHANNEL_MAP,), states.CLIP_CHANNEL, content.clip_channel_start, None),
    ("fadeIn", (states.AUDIO_CLIP,), states.FADE_IN, content.fade_start("GetFadeIn"), None),
    ("fadeOut", (states.AUDIO_CLIP,), states.FADE_OUT, content.fade_start("GetFadeOut"), None),
    ("clipStretch", (states.AUDIO_CLIP,), states.CLIP_STRETCH, content.stretch_start, None),
    ("take", (states.AUDIO_CLIP,), states.TAKE, content.take_start, None),
    ("editParameter", (states.AUDIO_CLIP,), states.EDIT_PARAMETER, content.edit_parameter_start("clip"), None),
    ("properties", (states.AUDIO_CLIP,), states.CLIP_PROPERTIES, content.clip_properties_start, None),
    ("videoClip", (states.VIDEO_TRACK,), states.VIDEO_CLIP, content.video_clip_start, content.video_clip_end),
    ("videoFormat", (states.VIDEO_CLIP,), states.VIDEO_FORMAT, content.video_format_start, None),
    ("metronome", (states.SESSION,), states.METRONOME, metronome_start, None),
    ("globalTrackInfo", (states.METRONOME,), states.GLOBAL_TRACK_INFO, global_track_info_start, None),
    ("tempoEvents", (states.GLOBAL_TRACK_INFO,), states.TEMPO_EVENTS, None, global_events_end("SetTempoEvents")),
    ("timeSignatureEvents", (states.GLOBAL_TRACK_INFO,), states.TIME_SIGNATURE_EVENTS, None, global_events_end("SetTimeSignatureEvents")),
    ("keySignatureEvents", (states.GLOBAL_TRACK_INFO,), states.KEY_SIGNATURE_EVENTS, None, global_events_end("SetKeySignatureEvents")),
    ("xmpMetadata", (states.SESSION,), states.XMP_METADATA, None, xmp_end),
    ("sessionState", (states.SESSION,), states.SESSION_STATE, session_state_start, advance),
    ("selectionState", (states.SESSION_STATE,), states.SELECTION_STATE, selection_start, None),
    ("viewState", (states.SESSION_STATE,), states.VIEW_STATE, view_start, None),
    ("timeFormatState", (states.SESSION_STATE,), states.TIME_FORMAT_STATE, time_format_start, None),
    ("mixingOptionState", (states.SESSION_STATE,), states.MIXING_OPTION_STATE, mixing_options_start, None),
    ("clipGroups", (states.SESSION,), states.CLIP_GROUPS, None, advance),
    ("clipGroup", (states.CLIP_GROUPS,), states.CLIP_GROUP, content.clip_group_start, content.clip_group_end),
    ("name", (states.CLIP_GROUP,), states.NAME, None, content.clip_group_name_end),
    ("item", (states.CLIP_GROUP,), states.CLIP_GROUP_ITEM, content.item_start, None),
    ("properties", (states.SESSION,), states.SESSION_PROPERTIES, properties_start, None),
    ("property", (states.SESSION_PROPERTIES,), states.PROPERTY, property_start, property_end),
    ("trackVisibilityPresets", (states.SESSION,), states.TRACK_VISIBILITY_PRESETS, presets_start, presets_end),
    ("trackVisibilityPreset", (states.TRACK_VISIBILITY_PRESETS,), states.TRACK_VISIBILITY_PRESET, preset_start, None),
    ("trackVisibility", (states.TRACK_VISIBILITY_PRESET,), states.TRACK_VISIBILITY, visibility_start, None),
]

# By name and the state of the enclosing element.
ROWS = {(name, place): Row(state, start, end)
        for name, places, state, start, end in TABLE for place in places}

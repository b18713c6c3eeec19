"""The elements of a session: where each may stand, and what its start and its end lead to.

A handler gets the reader and, at a start tag, the attributes. `r.host(object, operation, ...)` is a
call of the host; one of an object that there is not does nothing.
"""

import os

import differential_content as content
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

def session_start(r, a):
    if a.get("audioChannelType") in CHANNELS:
        r.host(r.session, "SetChannelCount", CHANNELS[a["audioChannelType"]])
    r.app_version = a.get("appVersion", "4.0")
    r.host(r.session, "SetSampleRate", signed32(a.get("sampleRate"), 48000) & NONE)
    r.host(r.session, "SetDuration", signed64(a.get("duration"), 0))
    r.host(r.session, "SetBitDepth", unsigned32(a.get("bitDepth"), 32))
    r.host(r.session, "SetFormatDescription",
           f"Vantor Tembra {r.app_version} Multitrack Session")


def session_end(r):
    r.host(r.session, "SetVersionDependentValue",
           r.cti_position if r.app_version == "4.0" else r.selection_start)
    r.advance()


def file_start(r, a):
    path = a.get("absolutePath", "")
    if "relativePath" in a:
        resolved = seen_from(a["relativePath"], r.location)
        if not path or (not os.path.exists(path) and os.path.exists(resolved)):
            path = resolved
    handler = a.get("mediaHandlerID", HANDLERS.get(a.get("mediaHandler"), ""))
    file = r.host(r.session, "GetFile", unsigned32(a.get("id"), NONE))
    r.host(file, "SetPath", path)
    for operation, text in (("SetMediaHandler", handler), ("SetRecoveryId", a.get("recoveryID")),
                            ("SetImporterPrivateSettings", a.get("importerPrivateSettings"))):
        if text:
            r.host(file, operation, text)


def audio_device_start(r, a):
    if a:
        r.host(r.session, "SetInputDeviceId", a.get("inputID", ""))
        r.host(r.session, "SetOutputDeviceId", a.get("outputID", ""))


def port_start(operation):
    return lambda r, a: r.host(r.session, operation, signed32(a.get("id"), 0), a.get("name", ""))


# Tracks.

def new_pending_track(a):
    return {"name": "", "height": 0, "hue": -1.0, "minimized": False, "channels": 0, "solo": False,
            "recordArmed": False, "monitoring": False, "soloSafe": False, "outputTrack": -1,
            "input": -1, "hardwareOutput": -1, "automationMode": 1,
            "id": unsigned32(a.get("id"), NONE), "index": unsigned32(a.get("index"), 0)}


def track_start(kind):
    def start(r, a):
        track = r.pending_track = new_pending_track(a)
        r.eq_pending = False
        if kind == 4:
            r.track = r.host(r.host(r.session, "GetMetronomeInfo"), "GetTrack")
        else:
            r.track = r.host(r.session, "GetAudioTrack", track["id"])
        if r.track is None:
            raise Stop("Invalid Track Id")
        r.host(r.track, "SetIndex", track["index"])
        r.host(r.track, "SetKind", kind)
        r.host(r.track, "SetSelected", flag(a, "select"))
        r.host(r.track, "SetAutomationLaneOpenState", flag(a, "automationLaneOpenState"))
        r.host(r.track, "SetVisible", flag(a, "visible", True))
        r.host(r.track, "SetPhaseInverted", flag(a, "phaseInverted"))
        r.host(r.track, "SetPreRendered", flag(a, "preRendered"))
        r.host(r.track, "SetSumToMono", flag(a, "sumtomono"))
        if a.get("preRenderedFile"):
            r.host(r.track, "SetPreRenderedFile", a["preRenderedFile"])
        if kind == 5:
            instrument = r.host(r.track, "GetInstrument")
            r.host(instrument, "SetMidiIn", a.get("midiIn", ""))
            r.host(instrument, "SetMidiAll", flag(a, "midiAll"))
    return start


def video_track_start(r, a):
    track = r.pending_track = new_pending_track(a)
    r.eq_pending = False
    r.video_track = r.host(r.session, "GetVideoTrack", track["id"])
    r.host(r.video_track, "SetIndex", track["index"])
    r.host(r.video_track, "SetSelected", flag(a, "select"))


def track_parameters_start(r, a):
    track = r.pending_track
    track["height"] = signed32(a.get("trackHeight"), track["height"])
    track["hue"] = real(a, "trackHue", track["hue"])
    track["minimized"] = flag(a, "trackMinimized", track["minimized"])


def track_name_end(r):
    r.pending_track["name"] = r.trimmed()


def track_parameters_end(member):
    def end(r):
        track, target = r.pending_track, getattr(r, member)
        r.host(target, "SetName", track["name"])
        r.host(target, "SetHeight", track["height"])
        r.host(target, "SetHue", track["hue"])
        r.host(target, "SetMinimized", track["minimized"])
    return end


def audio_parameters_start(r, a):
    track = r.pending_track
    track["channels"] = CHANNELS.get(a.get("audioChannelType"), track["channels"])
    for name in ("solo", "recordArmed", "monitoring", "soloSafe"):
        track[name] = flag(a, name, track[name], tolerant)
    track["automationMode"] = signed32(a.get("automationMode"), track["automationMode"])


def audio_parameters_end(r):
    track = r.pending_track
    for operation, value in (
            ("SetAudioChannelType", "channels"), ("SetSolo", "solo"),
            ("SetRecordArmed", "recordArmed"), ("SetMonitoring", "monitoring"),
            ("SetSoloSafe", "soloSafe"), ("SetOutputTrack", "outputTrack"), ("SetInput", "input"),
            ("SetHardwareOutput", "hardwareOutput"), ("SetAutomationMode", "automationMode")):
        r.host(r.track, operation, track[value])


def track_output_start(r, a):
    r.pending_track["outputTrack"] = r.pending_track["hardwareOutput"] = -1
    target = "outputTrack" if a.get("type") == "trackID" else "hardwareOutput"
    r.pending_track[target] = signed32(a.get("outputID"), -1)


def track_input_start(r, a):
    r.pending_track["input"] = signed32(a.get("inputID"), -1)


def send_list_start(r, a):
    r.send_list = r.host(r.track, "GetSendList")


def send_slot_start(r, a):
    if "slotIndex" not in a:
        return
    r.send_slot = r.host(r.send_list, "AddSlot")
    r.host(r.send_slot, "SetSlotIndex", unsigned32(a["slotIndex"], 0))
    if "sendOutputID" in a:
        r.host(r.send_slot, "SetSendOutputId", signed32(a["sendOutputID"], 0))
    if "preFader" in a:
        r.host(r.send_slot, "SetPreFader", strict(a["preFader"]))
    if "destCompIndex" in a:
        r.host(r.send_slot, "SetDestCompIndex", signed32(a["destCompIndex"], 0))


def presets_start(r, a):
    r.presets = []


def preset_start(r, a):
    r.presets.append((unsigned32(a.get("id"), 0), a.get("name", ""), []))


def visibility_start(r, a):
    if r.presets:
        r.presets[-1][2].append((unsigned32(a.get("id"), 0),
                                 exact_real32(a.get("trackHeight"), 0.0),
                                 flag(a, "trackMinimized")))


def presets_end(r):
    for number, name, tracks in r.presets:
        preset = r.host(r.session, "CreateTrackVisibilityPreset")
        r.host(preset, "SetId", number)
        r.host(preset, "SetName", name)
        for track in tracks:
            r.host(preset, "AddTrack", *track)
    r.presets = []


# The metronome and what the editor keeps.

def metronome_start(r, a):
    r.metronome = r.host(r.session, "GetMetronomeInfo")
    r.host(r.metronome, "SetEnabled", flag(a, "enabled"))
    sounds = a.get("soundSet")
    r.host(r.metronome, "SetSoundSet", SOUND_SETS.index(sounds) if sounds in SOUND_SETS else 8)
    pattern = [BEATS.index(beat) for beat in a.get("pattern", "").split(" ") if beat in BEATS]
    if pattern:
        r.host(r.metronome, "SetPattern", pattern)


def global_track_info_start(r, a):
    r.global_track_info = r.host(r.metronome, "GetGlobalTrackInfo")
    for name, operation in (("timeSigVisible", "SetTimeSigVisible"),
                            ("keySigVisible", "SetKeySigVisible"),
                            ("tempoVisible", "SetTempoVisible")):
        if name in a:
            r.host(r.global_track_info, operation, strict(a[name]))


def global_events_end(operation):
    return lambda r: content.set_block(r, r.global_track_info, operation)


def session_state_start(r, a):
    r.cti_position = signed64(a.get("ctiPosition"), 0)
    r.host(r.session, "SetCtiPosition", r.cti_position)
    r.host(r.session, "SetSmpteStart", signed64(a.get("smpteStart"), 0))


def selection_start(r, a):
    r.selection_start = signed64(a.get("selectionStart"), 0)
    r.host(r.session, "SetSelection", r.selection_start, signed64(a.get("selectionDuration"), 0))


def view_start(r, a):
    r.host(r.session, "SetViewState", signed64(a.get("horizontalViewStart"), 0),
           signed64(a.get("horizontalViewDuration"), 0), signed32(a.get("trackControlsWidth"), 0),
           signed32(a.get("verticalScrollOffset"), 0))


def time_format_start(r, a):
    shown = TIME_FORMATS.get(a.get("timeFormat"), 0)
    rate = signed32(a.get("timeCodeFrameRate"), 0)
    ntsc, drop = flag(a, "timeCodeNTSC", parse=tolerant), flag(a, "timeCodeDropFrame", parse=tolerant)
    if shown == 2 and ntsc:
        if rate == 24:
            shown = 14
        elif rate == 60:
            shown = 13 if drop else 12
        else:
            shown, rate = 4 if drop else 3, 30
    r.host(r.session, "SetTimeFormat", shown, rate, ntsc, drop,
           signed32(a.get("customFrameRate"), 0))
    r.host(r.session, "SetLinkToDefaultTimeSettings",
           flag(a, "linkToDefaultTimeSettings", True, tolerant))
    r.host(r.session, "SetMusicalTime", real(a, "beatsPerMinute", 0.0),
           *(signed32(a.get(name), 0) for name in ("beatsPerBar", "noteLength", "subdivisions")))


def mixing_options_start(r, a):
    r.host(r.session, "SetPanMode", flag(a, "defaultPanModeLogarithmic", parse=tolerant),
           real(a, "panPower", -3.0))
    r.host(r.session, "SetPlayOverlappingClips", flag(a, "playOverlappingClips", parse=tolerant))


def properties_start(r, a):
    r.properties = r.host(r.session, "GetProperties")


def property_start(r, a):
    r.property_key = a.get("key", "")


def property_end(r):
    r.host(r.properties, "SetProperty", r.property_key, r.trimmed())


def xmp_end(r):
    r.host(r.session, "SetXmpMetadata", r.trimmed())
    r.advance()


# The table: (name, states of the elements that it may stand in, own state, start, end).

class Row:
    def __init__(self, state, start, end):
        self.state = state
        self.met = False  # whether a document had it
        self.start = start
        self.end = end


MASTER, BUS, AUDIO, INSTRUMENT, VIDEO, METRONOME = 6, 7, 8, 9, 10, 12
AUDIO_TRACKS = (MASTER, BUS, AUDIO, INSTRUMENT, METRONOME)


def advance(r):
    r.advance()


TABLE = [
    ("session", (1,), 2, session_start, session_end),
    ("files", (1,), 3, None, advance),
    ("file", (3,), 4, file_start, None),
    ("audioDevice", (1,), 59, audio_device_start, advance),
    ("inputPort", (59,), 60, port_start("AddInputPort"), None),
    ("outputPort", (59,), 60, port_start("AddOutputPort"), None),
    ("name", (2,), 51, None, None),
    ("tracks", (2,), 5, None, advance),
    ("masterTrack", (5,), MASTER, track_start(3), None),
    ("audioTrack", (5,), AUDIO, track_start(1), None),
    ("instrumentTrack", (5,), INSTRUMENT, track_start(5), None),
    ("busTrack", (5,), BUS, track_start(2), None),
    ("videoTrack", (5,), VIDEO, video_track_start, None),
    ("metronomeTrack", (64,), METRONOME, track_start(4), None),
    ("trackParameters", AUDIO_TRACKS, 23, track_parameters_start, track_parameters_end("track")),
    ("trackParameters", (VIDEO,), 23, track_parameters_start, track_parameters_end("video_track")),
    ("name", (23,), 51, None, track_name_end),
    ("trackAudioParameters", AUDIO_TRACKS, 24, audio_parameters_start, audio_parameters_end),
    ("trackInput", (24,), 34, track_input_start, None),
    ("trackOutput", (24,), 35, track_output_start, None),
    ("trackPanner", (24,), 42, None, None),
    *((f"fivePointOne{channel}", (42,), 43 + place, None, None) for place, channel in enumerate(
        ("Left", "Right", "Center", "LeftSurround", "RightSurround", "LFE"))),
    *(("component", (place,), 22, content.control_start(place), content.component_end)
      for place in content.CONTROLS),
    ("sendList", (BUS, AUDIO, INSTRUMENT, METRONOME), 32, send_list_start, None),
    ("sendSlot", (32,), 33, send_slot_start, None),
    ("effectsRack", AUDIO_TRACKS, 25, content.rack_start("track"), None),
    ("effectsRack", (13,), 25, content.rack_start("clip"), None),
    ("slot", (25,), 27, content.slot_start, None),
    ("component", (27,), 26, content.slot_component_start, content.component_end),
    ("presetChunkData", (26,), 28, None, content.preset_chunk_end),
    ("parameter", (22, 26), 29, content.parameter_start, None),
    ("parameterKeyframes", (29,), 30, content.keyframes_start, None),
    ("parameterKeyframe", (30,), 31, content.keyframe_start, None),
    ("channelMap", (26,), 67, content.slot_map_start, None),
    ("channel", (67,), 68, content.slot_channel_start, None),
    ("busConfig", (26,), 66, None, content.bus_config_end),
    ("editParameter", AUDIO_TRACKS, 58, content.edit_parameter_start("track"), None),
    ("clip", (AUDIO,), 13, content.audio_clip_start, content.audio_clip_end),
    ("audioClip", (AUDIO,), 13, content.audio_clip_start, content.audio_clip_end),
    ("midiClip", (INSTRUMENT,), 14, content.midi_clip_start, content.midi_clip_end),
    ("midiEvents", (14,), 15, None, content.midi_events_end),
    ("channelMap", (13,), 19, None, None),
    ("channel", (19,), 20, content.clip_channel_start, None),
    ("fadeIn", (13,), 55, content.fade_start("GetFadeIn"), None),
    ("fadeOut", (13,), 56, content.fade_start("GetFadeOut"), None),
    ("clipStretch", (13,), 57, content.stretch_start, None),
    ("take", (13,), 61, content.take_start, None),
    ("editParameter", (13,), 58, content.edit_parameter_start("clip"), None),
    ("properties", (13,), 69, content.clip_properties_start, None),
    ("videoClip", (VIDEO,), 21, content.video_clip_start, content.video_clip_end),
    ("videoFormat", (21,), 54, content.video_format_start, None),
    ("metronome", (2,), 64, metronome_start, None),
    ("globalTrackInfo", (64,), 11, global_track_info_start, None),
    ("tempoEvents", (11,), 16, None, global_events_end("SetTempoEvents")),
    ("timeSignatureEvents", (11,), 17, None, global_events_end("SetTimeSignatureEvents")),
    ("keySignatureEvents", (11,), 18, None, global_events_end("SetKeySignatureEvents")),
    ("xmpMetadata", (2,), 53, None, xmp_end),
    ("sessionState", (2,), 36, session_state_start, advance),
    ("selectionState", (36,), 37, selection_start, None),
    ("viewState", (36,), 38, view_start, None),
    ("timeFormatState", (36,), 39, time_format_start, None),
    ("mixingOptionState", (36,), 40, mixing_options_start, None),
    ("clipGroups", (2,), 62, None, advance),
    ("clipGroup", (62,), 63, content.clip_group_start, content.clip_group_end),
    ("name", (63,), 51, None, content.clip_group_name_end),
    ("item", (63,), 65, content.item_start, None),
    ("properties", (2,), 70, properties_start, None),
    ("property", (70,), 71, property_start, property_end),
    ("trackVisibilityPresets", (2,), 72, presets_start, presets_end),
    ("trackVisibilityPreset", (72,), 73, preset_start, None),
    ("trackVisibility", (73,), 74, visibility_start, None),
]

# By name and the state of the element around.
ROWS = {(name, place): Row(state, start, end)
        for name, places, state, start, end in TABLE for place in places}

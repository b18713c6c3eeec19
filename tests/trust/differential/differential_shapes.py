"""The structure of sessions, for generating documents: the attributes of each element with the kinds
of their values, its possible children, and the kind of its text."""

KEYWORDS = {
    "channels": ("mono", "stereo", "fivePointOne", "quad", "Mono"),
    "version": ("4.0", "4.0.1", "25.1", "", "@0", "4.0 "),
    "control": ("trackFader", "trackMute", "trackPan", "trackEQ", "trackEQ", "sendComponent", "sendPan",
                "rackMix", "rackInput", "rackOutput", "clipGain", "clipMute", "clipPan",
                "TrackFader", ""),
    "output": ("trackID", "hardwareOutput", "other"),
    "direction": ("input", "output", "Input", ""),
    "curve": ("log", "cosine", "Log", ""),
    "link": ("linkedSymmetric", "linkedAsymmetric", "linked"),
    "mode": ("off", "realtime", "rendered", "1", "7", "Off"),
    "stretch": ("normal", "solo", "varispeed", "2", "x"),
    "quality": ("high", "medium", "low", "2", "-1", "High"),
    "keyframe": ("hold", "linear", "Hold"),
    "sounds": ("african1", "beeps", "kit", "sticks", "tabla", "Kit", "8"),
    "pattern": ("downBeat upBeat  upBeat ", "none", "", "x y", "subdivision\tupBeat none ",
                "upBeat upBeat downBeat subdivision none"),
    "time": ("timeFormatDecimal", "timeFormatSamples", "timeFormatTimeCode",
             "timeFormatTimeCode", "timeFormatBarsAndBeats", "2", "timecode"),
    "rate": ("24", "25", "30", "60", "0", "-1"),
    "handler": ("Waveform Audio (WAV)", "Ogg Opus", "Standard MIDI File (MID)", "Wave", ""),
    "path": ("@FOLDER@/media/a.wav", "@FOLDER@/media/missing.wav", "@FOLDER@/media", "/", "",
             "C:\\media\\a.wav", "/nowhere/../a"),
    "relative": ("media/a.wav", "./media//b \u00e9.wav", "..\\x/../media\\a.wav", "missing.wav",
                 "", ".", "../../../../../../../..", "\\media\\a.wav", "/"),
}

CLIP = ("id:int name:text hue:real select:bool lockedInTime:bool sourceInPoint:int "
        "sourceOutPoint:int startPoint:int endPoint:int ")
AUDIO_CLIP = CLIP + ("fileID:int looped:bool offline:bool zOrder:int crossFadeHeadClipID:int "
                     "crossFadeTailClipID:int clipAutoCrossfade:bool")
TRACK = ("id:id index:int select:bool automationLaneOpenState:bool visible:bool "
         "phaseInverted:bool preRendered:bool sumtomono:bool preRenderedFile:text midiIn:text "
         "midiAll:bool")
TRACK_PARTS = "trackParameters trackAudioParameters effectsRack editParameter sendList"
CLIP_PARTS = ("properties effectsRack component fadeIn fadeOut clipStretch take editParameter "
              "channelMap")
FADE = "startPoint:int endPoint:int type:curve shape:int crossFadeLinkType:link"
COMPONENT = ("id:control componentGuid:text componentID:text name:text presetName:text "
             "powered:bool editorVisible:bool editorLeft:int editorTop:int editorWidth:int "
             "editorHeight:int")

# name: (attributes, children, text)
SHAPES = {
    "orvo": ("version:text", "session session files audioDevice", None),
    "session": ("sampleRate:int audioChannelType:channels duration:int bitDepth:int "
                "appVersion:version appBuild:text",
                "name tracks tracks tracks sessionState xmpMetadata clipGroups metronome "
                "properties trackVisibilityPresets workspaceSettings", None),
    "files": ("", "file file", None),
    "file": ("id:id absolutePath:path relativePath:relative mediaHandler:handler "
             "mediaHandlerID:text recoveryID:text importerPrivateSettings:text", "", None),
    "audioDevice": ("inputID:text outputID:text", "inputPort outputPort", None),
    "inputPort": ("id:int name:text", "", None),
    "outputPort": ("id:int name:text", "", None),
    "name": ("", "", "text"),
    "tracks": ("", "masterTrack audioTrack audioTrack audioTrack instrumentTrack busTrack "
               "videoTrack", None),
    "masterTrack": (TRACK, TRACK_PARTS, None),
    "busTrack": (TRACK, TRACK_PARTS, None),
    "audioTrack": (TRACK, TRACK_PARTS + " clip audioClip audioClip audioClip", None),
    "instrumentTrack": (TRACK, TRACK_PARTS + " midiClip midiClip", None),
    "metronomeTrack": (TRACK, TRACK_PARTS, None),
    "videoTrack": ("id:id index:int select:bool", "trackParameters videoClip videoClip", None),
    "trackParameters": ("trackHeight:int trackHue:real trackMinimized:bool", "name", None),
    "trackAudioParameters": ("audioChannelType:channels volume:real mute:bool solo:bool "
                             "recordArmed:bool monitoring:bool soloSafe:bool automationMode:int",
                             "trackInput trackOutput trackPanner component component", None),
    "trackInput": ("inputID:int", "", None),
    "trackOutput": ("type:output outputID:int", "", None),
    "trackPanner": ("panLeftRight:real balanceLeftRight:real angle:real radius:real "
                    "stereoSpread:real", "fivePointOneLeft fivePointOneLFE", None),
    "fivePointOneLeft": ("angle:real", "", None),
    "fivePointOneLFE": ("angle:real", "", None),
    "sendList": ("", "sendSlot", None),
    "sendSlot": ("slotIndex:int sendOutputID:int preFader:bool destCompIndex:int",
                 "component component", None),
    "effectsRack": ("preFader:bool", "component slot slot", None),
    "slot": ("slotIndex:int powered:bool sideChainChannels:int", "component", None),
    "component": (COMPONENT, "parameter parameter parameter presetChunkData channelMap busConfig",
                  None),
    "presetChunkData": ("", "", "block"),
    "parameter": ("index:int parameterValue:real name:text safeDuringWrite:bool",
                  "parameterKeyframes", None),
    "parameterKeyframes": ("enableSplines:bool readOnly:bool",
                           "parameterKeyframe parameterKeyframe", None),
    "parameterKeyframe": ("value:real sampleOffset:int type:keyframe select:bool", "", None),
    "channelMap": ("direction:direction", "channel channel", None),
    "channel": ("index:int sourceIndex:int", "", None),
    "busConfig": ("", "", "text"),
    "editParameter": ("slotIndex:int parameterIndex:int", "", None),
    "clip": (AUDIO_CLIP, CLIP_PARTS, None),
    "audioClip": (AUDIO_CLIP, CLIP_PARTS, None),
    "midiClip": (AUDIO_CLIP, "midiEvents", None),
    "midiEvents": ("", "", "block"),
    "fadeIn": (FADE, "", None),
    "fadeOut": (FADE, "", None),
    "clipStretch": ("stretchMode:mode stretchType:stretch stretchRatio:real pitchAdjustment:real "
                    "stretchQuality:quality transientSensitivity:int adaptiveWindowSize:int "
                    "preserveFormants:bool", "", None),
    "take": ("sourceInPoint:int", "", None),
    "videoClip": (AUDIO_CLIP, "videoFormat", None),
    "videoFormat": ("timeScale:int sampleSize:int pixelType:int width:int height:int "
                    "parNumerator:int parDenominator:int fieldType:int", "", None),
    "metronome": ("enabled:bool soundSet:sounds pattern:pattern", "metronomeTrack globalTrackInfo",
                  None),
    "globalTrackInfo": ("timeSigVisible:bool keySigVisible:bool tempoVisible:bool",
                        "tempoEvents timeSignatureEvents keySignatureEvents", None),
    "tempoEvents": ("", "", "block"),
    "timeSignatureEvents": ("", "", "block"),
    "keySignatureEvents": ("", "", "block"),
    "xmpMetadata": ("", "", "text"),
    "sessionState": ("ctiPosition:int smpteStart:int",
                     "selectionState viewState timeFormatState mixingOptionState", None),
    "selectionState": ("selectionStart:int selectionDuration:int", "", None),
    "viewState": ("horizontalViewStart:int horizontalViewDuration:int trackControlsWidth:int "
                  "verticalScrollOffset:int", "", None),
    "timeFormatState": ("timeFormat:time timeCodeFrameRate:rate timeCodeNTSC:bool "
                        "timeCodeDropFrame:bool customFrameRate:int linkToDefaultTimeSettings:bool "
                        "beatsPerMinute:real beatsPerBar:int noteLength:int subdivisions:int", "",
                        None),
    "mixingOptionState": ("defaultPanModeLogarithmic:bool panPower:real playOverlappingClips:bool",
                          "", None),
    "clipGroups": ("", "clipGroup clipGroup", None),
    "clipGroup": ("id:int hue:real", "name item item", None),
    "item": ("trackID:int clipID:int", "", None),
    "properties": ("properties:text", "property property", None),
    "property": ("key:text", "", "text"),
    "trackVisibilityPresets": ("", "trackVisibilityPreset trackVisibilityPreset", None),
    "trackVisibilityPreset": ("id:int name:text", "trackVisibility trackVisibility", None),
    "trackVisibility": ("id:int trackHeight:real trackMinimized:bool", "", None),
    "workspaceSettings": ("id:int", "session", None),
    "later": ("id:int", "session later name", "text"),
}

ATTRIBUTES = {name: [tuple(part.split(":")) for part in shape[0].split()]
              for name, shape in SHAPES.items()}
CHILDREN = {name: shape[1].split() for name, shape in SHAPES.items()}
TEXTS = {name: shape[2] for name, shape in SHAPES.items()}
NAMES = list(SHAPES)

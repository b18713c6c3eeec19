"""A second, independent reader of sessions: turns the content of a document into calls to a host.

It models the host of the tests, which has every track and file except the one with the highest id,
and answers the same question with the same object.
"""

import xml.parsers.expat

import differential_states as states
from differential_elements import ROWS
from differential_values import NONE, XML_BLANKS, Stop

MILESTONES = 7
# Separates namespace and local name; no name can contain it.
NAMESPACE_END = "/"

# The interface of the object that an operation returns.
RETURNS = {
    "GetFile": "IEditFile", "GetVideoTrack": "IEditVideoTrack", "GetAudioTrack": "IEditAudioTrack",
    "GetMetronomeInfo": "IEditMetronomeInfo", "GetTrack": "IEditAudioTrack",
    "GetGlobalTrackInfo": "IEditGlobalTrackInfo", "GetInstrument": "IEditInstrumentTrack",
    "CreateTrackVisibilityPreset": "IEditTrackVisibilityPreset",
    "CreateClipGroup": "IEditClipGroup", "CreateAudioClip": "IEditAudioClip",
    "CreateVideoClip": "IEditVideoClip", "CreateMIDIClip": "IEditMIDIClip",
    "GetMIDIClipList": "IEditMIDIClipList", "GetSendList": "IEditSendList",
    "GetEffectsRack": "IEditEffectsRack", "GetFadeIn": "IEditClipFade",
    "GetFadeOut": "IEditClipFade", "GetClipStretch": "IEditClipStretch",
    "GetVideoFormat": "IEditVideoFormat", "GetParameterAutomation": "IEditAutomationLane",
    ("IEditSession", "GetProperties"): "IEditProperties",
    ("IEditAudioClip", "GetProperties"): "IEditClipProperties",
    ("IEditSendList", "AddSlot"): "IEditSendSlot",
    ("IEditEffectsRack", "AddSlot"): "IEditEffectsSlot",
}
# The private interface through which an object is held, and operations that another interface declares.
HELD = {"IEditAudioTrack": "IEditAudioTrackPrivate"}
DECLARED = {"CreateAudioClip": "IEditAudioTrack", "GetMIDIClipList": "IEditAudioTrack",
            "GetGlobalTrackInfo": "IEditMetronomeInfoPrivate"}


class HostObject:
    def __init__(self, number, interface):
        self.number = number
        self.interface = interface
        self.given = {}


class Host:
    """Records every call as (object, operation, arguments, returned object or None)."""

    def __init__(self):
        self.calls = []
        self.count = 0
        self.session = self.make("IEditSession")

    def make(self, interface):
        self.count += 1
        return HostObject(self.count, interface)

    def __call__(self, target, operation, *arguments):
        """Skips calls on missing objects."""
        if target is None:
            return None
        returns = RETURNS.get(operation) or RETURNS.get((target.interface, operation))
        if returns is None and operation.endswith("Component"):
            returns = "IEditComponent"
        declared = DECLARED.get(operation, target.interface)
        name = f"{declared}#{target.number}"
        if returns is None:
            self.calls.append((name, operation, list(arguments), None))
            return None
        result = self.given(target, operation, arguments, returns)
        told = "null" if result is None else f"{returns}#{result.number}"
        self.calls.append((name, operation, list(arguments), told))
        return result

    def given(self, target, operation, arguments, interface):
        if operation.startswith(("Create", "Add")):
            return self.make(interface)
        if arguments and arguments[0] == NONE:
            return None
        if (operation, arguments) not in target.given:
            target.given[operation, arguments] = self.make(HELD.get(interface, interface))
        return target.given[operation, arguments]


class Reader:
    """A single read. Its attributes hold what handlers remember, at first nothing."""

    def __init__(self, location, skip_depth):
        self.location = location
        self.skip_depth = skip_depth
        self.states = [states.UNKNOWN]
        self.root_seen = False
        self.text = ""
        self.progress = 0
        self.host = Host()
        self.session = self.host.session
        self.track = self.video_track = None
        self.clip = self.midi_clip = self.video_clip = self.clip_group = None
        self.rack = self.slot = self.component = self.lane = None
        self.send_list = self.send_slot = None
        self.metronome = self.global_track_info = self.properties = None
        self.clip_name, self.clip_hue = "", 0.0
        self.cti_position = self.selection_start = 0
        self.pending_track = {}
        self.channel_map = {}
        self.presets = []
        self.parameter_values = []
        self.eq_pending = self.powered_applied = self.map_is_input = False
        self.parameter_index = 0
        self.app_version = self.property_key = self.group_name = ""
        self.host(self.session, "SetProgress", 0, MILESTONES, 0, 0)

    def trimmed(self):
        return self.text.strip(XML_BLANKS)

    def advance(self):
        self.progress = min(self.progress + 1, MILESTONES)
        self.host(self.session, "SetProgress", self.progress, MILESTONES, 0, 0)

    def start(self, name, attributes):
        self.text = ""
        if not self.root_seen:
            if name != "orvo":
                raise Stop("not a session file")
            self.root_seen = True
            self.states.append(states.ORVO)
            return
        if self.skip_depth:
            self.states.append(states.UNKNOWN)
            return
        row = ROWS.get((name, self.states[-1]))
        if row is None:
            self.skip_depth = len(self.states)
            self.states.append(states.UNKNOWN)
            return
        row.met = True
        self.states.append(row.state)
        if row.start:
            row.start(self, attributes)

    def end(self, name):
        self.states.pop()
        if name == "orvo":
            return
        if self.skip_depth:
            if len(self.states) != self.skip_depth:
                return
            self.skip_depth = 0
        row = ROWS.get((name, self.states[-1]))
        if row is not None and row.end:
            row.end(self)

    def characters(self, text):
        self.text += text


def local(name):
    return name.rpartition(NAMESPACE_END)[2]


def attribute_map(pairs):
    """Maps local names to values: an unprefixed name wins over prefixed ones, then the last one wins."""
    attributes = {local(name): value for name, value in zip(pairs[::2], pairs[1::2])}
    attributes.update((name, value) for name, value in zip(pairs[::2], pairs[1::2])
                      if NAMESPACE_END not in name)
    return attributes


class Outcome:
    """The result of a read. `well_formed` is None if the reader stopped early; `version` and `encoding`
    are what the document declares."""

    def __init__(self):
        self.calls = []
        self.well_formed = None
        self.read = False
        self.skip_depth = 0
        self.version = None
        self.encoding = None


def read(document, location, skip_depth):
    reader, outcome = Reader(location, skip_depth), Outcome()
    parser = xml.parsers.expat.ParserCreate(None, NAMESPACE_END)
    parser.buffer_text = True
    parser.ordered_attributes = True

    def declaration(version, encoding, _standalone):
        outcome.version = version
        outcome.encoding = encoding

    parser.XmlDeclHandler = declaration
    parser.StartElementHandler = lambda name, pairs: reader.start(local(name), attribute_map(pairs))
    parser.EndElementHandler = lambda name: reader.end(local(name))
    parser.CharacterDataHandler = reader.characters
    try:
        parser.Parse(document, True)
        outcome.well_formed = True
        outcome.read = reader.root_seen
    except (xml.parsers.expat.ExpatError, LookupError, ValueError):  # the latter of encodings
        outcome.well_formed = False
    except Stop:
        pass
    outcome.calls = reader.host.calls
    outcome.skip_depth = reader.skip_depth
    return outcome

"""Documents made to break a reader, each with a name, its content and the expected result."""

MEBIBYTE = 1 << 20


class Document:
    """`refused`: a part of the message that refuses it, or SILENT; None if it must be read."""

    def __init__(self, name, content, refused):
        self.name = name
        self.content = content
        self.refused = refused


def numbered(piece, count):
    return "".join(piece.replace("#", str(i)) for i in range(count))


def in_root(content):
    return "<orvo>" + content + "</orvo>"


def in_session(content):
    return in_root("<session>" + content + "</session>")


def in_clip(content):
    return in_session('<tracks><audioTrack id="1"><audioClip id="2">' + content
                      + "</audioClip></audioTrack></tracks>")


def in_rack(content):
    return in_session('<tracks><audioTrack id="1"><effectsRack>' + content
                      + "</effectsRack></audioTrack></tracks>")


SILENT = object()  # refused for its content, not its syntax, and therefore without a message
DOCTYPE = "no document type declaration"
MANY_ATTRIBUTES = "256 attributes"
LONG_NAME = "name is longer than the 1024"
FOREIGN = "64 KiB that one may have in this encoding"
HALF = "half of a character"
LONG_TAG = "tag is longer than the 1 MiB"
LONG_TEXT = "text is longer than the 32 MiB"


def document_types():
    def internal(subset, body="<orvo/>"):
        return "<!DOCTYPE orvo [" + subset + "]>" + body

    chain = '<!ENTITY e0 "x">' + "".join(
        f'<!ENTITY e{i} "&e{i - 1};&e{i - 1};">' for i in range(1, 40))
    parameter_chain = "<!ENTITY % p0 'x'>" + "".join(
        f"<!ENTITY % p{i} '%p{i - 1};%p{i - 1};'>" for i in range(1, 40))
    return [
        ("empty", "<!DOCTYPE orvo><orvo/>"),
        ("with_space", "\n\n  <!DOCTYPE   orvo   >\n<orvo/>"),
        ("after_declaration", '<?xml version="1.0"?><!DOCTYPE orvo><orvo/>'),
        ("after_comment", "<!-- a --><!DOCTYPE orvo><orvo/>"),
        ("after_instruction", "<?a b?><!DOCTYPE orvo><orvo/>"),
        ("after_long_comment", "<!--" + "x" * 200000 + "--><!DOCTYPE orvo><orvo/>"),
        ("internal_subset", internal("<!ELEMENT orvo EMPTY>")),
        ("unfinished", "<!DOCTYPE orvo ["),
        ("endless_name", "<!DOCTYPE " + "x" * 3 * MEBIBYTE),
        ("billion_laughs", internal(chain, in_root("&e39;"))),
        ("quadratic_entities",
         internal('<!ENTITY a "' + "x" * 100000 + '">', in_root("&a;" * 100000))),
        ("ten_million_expansions", internal('<!ENTITY a "">', in_root("&a;" * 1000000))),
        ("entities_in_attribute",
         internal(chain, '<orvo a="&e39;"/>')),
        ("parameter_entity_bomb", internal(parameter_chain + "%p39;")),
        ("recursive_entity", internal('<!ENTITY a "&b;"><!ENTITY b "&a;">', in_root("&a;"))),
        ("external_file", '<!DOCTYPE orvo SYSTEM "/etc/passwd"><orvo/>'),
        ("external_url", '<!DOCTYPE orvo SYSTEM "http://127.0.0.1:9/x.dtd"><orvo/>'),
        ("external_public", '<!DOCTYPE orvo PUBLIC "-//x" "file:///etc/passwd"><orvo/>'),
        ("external_entity",
         internal('<!ENTITY a SYSTEM "file:///etc/passwd">', in_root("&a;"))),
        ("external_entity_device",
         internal('<!ENTITY a SYSTEM "file:///dev/zero">', in_root("&a;"))),
        ("external_parameter_entity",
         internal('<!ENTITY % a SYSTEM "http://127.0.0.1:9/a.dtd">%a;')),
        ("external_pipe", '<!DOCTYPE orvo SYSTEM "/dev/stdin"><orvo/>'),
        ("unparsed_entity", internal('<!NOTATION n SYSTEM "n">'
                                     '<!ENTITY a SYSTEM "a.gif" NDATA n>')),
        ("default_attributes",
         internal('<!ATTLIST orvo version CDATA "' + "9" * 100000 + '">')),
        ("many_declarations", internal(numbered("<!ELEMENT e# ANY>", 100000))),
        ("content_model_bomb",
         internal("<!ELEMENT orvo (" + "(" * 5000 + "a" + ")?" * 5000 + ")>")),
        ("attribute_list_bomb",
         internal("<!ATTLIST orvo " + numbered('a# CDATA "x" ', 50000) + ">")),
        ("conditional_section", internal("<![INCLUDE[<!ELEMENT orvo ANY>]]>")),
        ("standalone", "<?xml version='1.0' standalone='yes'?><!DOCTYPE orvo><orvo/>"),
        ("xml_1_1", "<?xml version='1.1'?><!DOCTYPE orvo><orvo/>"),
        ("other_root", "<!DOCTYPE other><orvo/>"),
    ]


def sizes():
    megabytes = "x" * 5 * MEBIBYTE
    return [
        ("deep", "<orvo>" + "<a>" * 200000, "256 levels"),
        ("deep_known", "<orvo><session>" * 150, "256 levels"),
        ("deep_with_prefixes",
         "<orvo>" + '<a xmlns:p="u">' * 1000, "256 levels"),
        ("deep_256", "<orvo>" + "<a>" * 255 + "</a>" * 255 + "</orvo>", None),
        ("long_attribute", in_root('<a b="' + megabytes + '"/>'), LONG_TAG),
        ("very_long_attribute", in_root('<a b="' + "x" * 100 * MEBIBYTE + '"/>'), LONG_TAG),
        ("long_attribute_of_root", '<orvo a="' + megabytes + '"/>', LONG_TAG),
        ("long_attribute_with_references", in_root('<a b="' + "&#65;" * MEBIBYTE + '"/>'),
         LONG_TAG),
        ("long_attribute_with_line_feeds", in_root('<a b="' + "\n" * 2 * MEBIBYTE + '"/>'),
         LONG_TAG),
        ("long_name", in_root("<" + megabytes + "/>"), LONG_TAG),
        ("long_attribute_name", in_root("<a " + megabytes + '=""/>'), LONG_TAG),
        ("long_prefix", in_root("<" + megabytes + ":a/>"), LONG_TAG),
        ("long_end_tag", "<orvo></" + megabytes + ">", "expected end of tag"),
        ("long_space_in_tag", in_root("<a" + " " * 5 * MEBIBYTE + "/>"), LONG_TAG),
        ("long_space_in_end_tag", "<orvo></orvo" + "\n" * 5 * MEBIBYTE + ">", LONG_TAG),
        ("long_instruction", in_root("<?a " + megabytes + "?>"), LONG_TAG),
        ("long_instruction_target", in_root("<?" + megabytes + "?>"), LONG_TAG),
        ("long_declaration", '<?xml version="' + megabytes + '"?><orvo/>', ""),
        ("long_reference", in_root("&" + megabytes + ";"), ""),
        ("long_character_reference", in_root("&#x" + "0" * 5 * MEBIBYTE + "41;"), None),
        ("many_attributes", in_root("<a " + numbered('b#="" ', 1000000) + "/>"), MANY_ATTRIBUTES),
        ("thousands_of_attributes", in_root("<a " + numbered('b#="" ', 4000) + "/>"), MANY_ATTRIBUTES),
        ("attributes_beside_one_of_xml",
         '<orvo xml:a="" ' + numbered('b#="" ', 90000) + "/>", MANY_ATTRIBUTES),
        ("thousands_of_attributes_beside_one_of_xml",
         '<orvo xml:a="" ' + numbered('b#="" ', 4000) + "/>", MANY_ATTRIBUTES),
        ("attributes_beside_a_declaration",
         '<orvo xmlns:p="u" ' + numbered('b#="" ', 90000) + "/>", MANY_ATTRIBUTES),
        ("attributes_below_a_declaration",
         '<orvo xmlns:p="u"><a ' + numbered('b#="" ', 90000) + "/></orvo>", MANY_ATTRIBUTES),
        ("attributes_of_one_local_name",
         "<orvo " + numbered('xmlns:p#="p#" p#:version="" ', 30000) + "/>", MANY_ATTRIBUTES),
        ("attributes_of_one_local_name_before_their_declarations",
         "<orvo " + numbered('p#:version="" xmlns:p#="p#" ', 30000) + "/>", MANY_ATTRIBUTES),
        ("long_values_with_signs_in_256_attributes",
         in_root("<a " + numbered('b#="' + "='" * 1000 + '" ', 256) + "/>"), None),
        ("signs_in_a_long_section", in_root("<a><![CDATA[" + "a='b' " * MEBIBYTE + "]]></a>"), None),
        ("name_of_1024", in_root("<" + "a" * 1024 + "/>"), None),
        ("name_of_1025", in_root("<" + "a" * 1025 + "/>"), LONG_NAME),
        ("prefix_of_1025", in_root("<a xmlns:" + "p" * 1025 + '="u"/>'), LONG_NAME),
        ("namespace_of_1025", in_root('<a xmlns="' + "u" * 1025 + '"/>'), LONG_NAME),
        ("many_long_names", in_root(numbered("<" + "a" * 400000 + "#/>", 50)), LONG_NAME),
        ("many_attributes_of_one_name", in_root("<a " + 'b="" ' * 90000 + "/>"), MANY_ATTRIBUTES),
        ("attributes_of_one_name", in_root("<a " + 'b="" ' * 4000 + "/>"), "already"),
        ("many_prefixes", in_root("<a " + numbered('xmlns:p#="u" ', 50000) + "/>"),
         MANY_ATTRIBUTES),
        ("hundreds_of_prefixes", in_root("<a " + numbered('xmlns:p#="u" ', 300) + "/>"),
         "256 namespace prefixes"),
        ("prefixes_by_level",
         in_root("".join("<a " + numbered(f'xmlns:p{level}x#="u" ', 50) + ">"
                         for level in range(200))), "256 namespace prefixes"),
        ("many_namespaces", in_root(numbered('<a xmlns="u#"/>', 200000)), "1024 namespaces"),
        ("many_prefix_names", in_root(numbered('<a xmlns:p#="u"/>', 200000)),
         "1024 namespaces"),
        ("many_names", in_root(numbered("<a#/>", 300000)), "1024 names"),
        ("many_attribute_names", in_root(numbered('<a b#=""/>', 200000)), None),
        ("many_elements", in_root("<a/>" * 500000), None),
        ("many_files", in_root("<files>" + numbered('<file id="#"/>', 30000) + "</files>"), None),
        ("many_sections", in_root("<a>" + "<![CDATA[x]]>" * 200000 + "</a>"), None),
        ("many_comments", in_root("<!---->" * 400000), None),
        ("many_instructions", in_root("<?a?>" * 400000), None),
        ("many_references", in_root("<a>" + "&#65;&amp;" * 300000 + "</a>"), None),
        ("section_of_20_mib", in_root("<a><![CDATA[" + "x" * 20 * MEBIBYTE + "]]></a>"), None),
        ("section_of_40_mib", in_root("<a><![CDATA[" + "x" * 40 * MEBIBYTE + "]]></a>"),
         LONG_TEXT),
        ("comment_of_40_mib", in_root("<!--" + "x" * 40 * MEBIBYTE + "-->"), LONG_TEXT),
        ("metadata_of_20_mib",
         in_session("<xmpMetadata><![CDATA[" + "x" * 20 * MEBIBYTE + "]]></xmpMetadata>"), None),
        ("text_of_40_mib", in_root("<a>" + "x" * 40 * MEBIBYTE + "</a>"), None),
        ("space_of_20_mib", in_root(" " * 20 * MEBIBYTE), None),
        ("space_behind_root", "<orvo/>" + "\n" * 20 * MEBIBYTE, None),
        ("unfinished_section", "<orvo><![CDATA[" + "x" * 5 * MEBIBYTE, "CDATA"),
        ("unfinished_comment", "<orvo><!--" + "x" * 5 * MEBIBYTE, "comment"),
        ("section_that_hides_a_tag",
         in_root('<!-- <![CDATA[ --><a b="' + megabytes + '"/>'), LONG_TAG),
        ("comment_that_hides_a_tag",
         in_root('<a><![CDATA[ <!-- ]]></a><a b="' + megabytes + '"/>'), LONG_TAG),
    ]


LONG_METADATA = ("<session><xmpMetadata><![CDATA[" + "\u00e4" * 150000
                 + "]]></xmpMetadata></session>")


def encodings():
    good = "<orvo/>"
    wide = good.encode("utf-16-le")
    declared = '<?xml version="1.0" encoding="{}"?><orvo/>'
    return [
        ("empty_file", b"", ""),
        ("one_zero_byte", b"\0", ""),
        ("only_zero_bytes", b"\0" * MEBIBYTE, ""),
        ("only_a_mark", b"\xef\xbb\xbf", ""),
        ("only_a_wide_mark", b"\xff\xfe", ""),
        ("nul_behind_root", b"<orvo/>\0", "NUL"),
        ("zero_filled_tail", b"<orvo/>\n" + b"\0" * 4096, "NUL"),
        ("rest_behind_nul", b"<orvo/>\0<orvo>", "NUL"),
        ("nul_in_text", b"<orvo>\0</orvo>", ""),
        ("nul_in_attribute", b'<orvo a="\0"/>', ""),
        ("nul_in_name", b"<or\0vo/>", ""),
        ("nul_in_comment", b"<orvo><!-- \0 --></orvo>", ""),
        ("nul_in_section", b"<orvo><![CDATA[\0]]></orvo>", ""),
        ("zeros_in_the_middle", b"<orvo>" + b"\0" * 4096 + b"</orvo>", ""),
        ("wide_nul_behind_root", b"\xff\xfe" + wide + b"\0\0", "NUL"),
        ("wide_odd_end", b"\xff\xfe" + wide + b"\n", "within a character"),
        ("wide_odd_end_big_endian", b"\xfe\xff" + good.encode("utf-16-be") + b"\0",
         "within a character"),
        ("wide_half_of_a_pair", b"\xff\xfe" + "<orvo>".encode("utf-16-le") + b"\x00\xd8"
         + "</orvo>".encode("utf-16-le"), ""),
        ("wide_swapped_pair", b"\xff\xfe" + "<orvo>".encode("utf-16-le") + b"\x00\xdc\x00\xd8"
         + "</orvo>".encode("utf-16-le"), ""),
        ("wide_without_mark", wide, ""),
        ("wide", b"\xff\xfe" + wide, None),
        ("wide_big_endian", b"\xfe\xff" + good.encode("utf-16-be"), None),
        ("cut_after_lead_byte", b"<orvo/>\xc3", "within a character"),
        ("cut_in_three_bytes", b"<orvo/>\xe2\x82", "within a character"),
        ("byte_255_behind_root", b"<orvo/>\xff", "within a character"),
        ("byte_255_in_text", b"<orvo>\xff</orvo>", ""),
        ("lone_continuation", b"<orvo>\x80</orvo>", ""),
        ("overlong_slash", b"<orvo>\xc0\xaf</orvo>", ""),
        ("overlong_nul", b"<orvo>\xc0\x80</orvo>", ""),
        ("overlong_less_than", b"<orvo>\xe0\x80\xbc</orvo>", ""),
        ("surrogate_in_utf8", b"<orvo>\xed\xa0\x80</orvo>", ""),
        ("beyond_unicode", b"<orvo>\xf4\x90\x80\x80</orvo>", ""),
        ("five_bytes", b"<orvo>\xf8\x88\x80\x80\x80</orvo>", ""),
        ("cut_in_text", b"<orvo>\xe2\x82</orvo>", ""),
        ("unknown_encoding", declared.format("x-none").encode(), ""),
        ("empty_encoding", declared.format("").encode(), ""),
        ("long_encoding", declared.format("x" * 100000).encode(), ""),
        ("encoding_of_a_path", declared.format("../../etc/passwd").encode(), ""),
        ("wide_declared_narrow_written", declared.format("UTF-16").encode(), None),
        ("four_bytes_declared", declared.format("UCS-4").encode(), None),
        ("latin", b'<?xml version="1.0" encoding="ISO-8859-1"?><orvo a="\xe4"/>', None),
        ("document_type_in_ebcdic",
         ('<?xml version="1.0" encoding="ebcdic-cp-us"?><!DOCTYPE orvo [<!ENTITY a "b">]><orvo/>')
         .encode("cp037"), DOCTYPE),
        ("ebcdic", '<?xml version="1.0" encoding="ebcdic-cp-us"?><orvo/>'.encode("cp037"), None),
        ("long_tag_in_ebcdic",
         ('<?xml version="1.0" encoding="ebcdic-cp-us"?>' + in_root('<a b="' + "x" * 300000 + '"/>'))
         .encode("cp037"), FOREIGN),
        ("long_tag_in_utf_7",
         b'<?xml version="1.0" encoding="UTF-7"?><orvo>+ADw-a b="' + b"x" * 300000 + b'"/></orvo>',
         FOREIGN),
        ("long_tag_in_iso_8859_2",
         b'<?xml version="1.0" encoding="ISO-8859-2"?><orvo a="' + b"\xe4" * 300000 + b'"/>', None),
        ("long_text_in_utf_8_by_another_name",
         b'<?xml version="1.0" encoding="utf8"?>' + in_root(LONG_METADATA).encode(), None),
        ("long_text_in_latin_1_by_another_name",
         b'<?xml version="1.0" encoding="latin1"?>' + in_root(LONG_METADATA).encode("latin-1"), None),
        ("long_text_in_single_bytes_declared_wide",
         b'<?xml version="1.0" encoding="UTF-16"?>' + in_root(LONG_METADATA).encode(), None),
        ("long_tag_in_single_bytes_behind_a_wide_declaration",
         b"\xff\xfe" + '<?xml version="1.0" encoding="UTF-8"?>'.encode("utf-16-le")
         + in_root('<a b="' + "x" * 300000 + '"/>').encode(), FOREIGN),
        ("long_tag_in_wide_units_behind_a_declaration_in_single_bytes",
         b'<?xml version="1.0" encoding="UTF-16LE"?>'
         + in_root('<a b="' + "x" * 300000 + '"/>').encode("utf-16-le"), FOREIGN),
        ("half_of_a_pair_behind_a_declaration_in_ebcdic",
         '<?xml version="1.0" encoding="CESU-8"?>'.encode("cp037")
         + b'<orvo version="\xed\xa0\x80"/>', HALF),
        ("half_of_a_pair_in_a_hidden_attribute",
         b"\xff\xfe" + '<orvo xmlns:x="u" x:version="x\ud800" version="1"/>'
         .encode("utf-16-le", "surrogatepass"), HALF),
        ("half_of_a_pair_in_one_of_two_attributes",
         b"\xff\xfe" + '<orvo xmlns:x="u" xmlns:y="v" x:version="x\ud800" y:version="1"/>'
         .encode("utf-16-le", "surrogatepass"), HALF),
        ("document_type_wide", b"\xff\xfe" + "<!DOCTYPE orvo><orvo/>".encode("utf-16-le"), DOCTYPE),
        ("long_tag_wide", b"\xff\xfe" + in_root('<a b="' + "x" * 3 * MEBIBYTE + '"/>')
         .encode("utf-16-le"), LONG_TAG),
        ("section_wide", b"\xff\xfe" + in_root("<a><![CDATA[" + "x" * 3 * MEBIBYTE + "]]></a>")
         .encode("utf-16-le"), None),
    ]


def malformed():
    return [
        ("xmlns_as_a_prefix", "<xmlns:orvo/>", "prefix xmlns"),
        ("xmlns_as_a_prefix_within", "<orvo><xmlns:a/></orvo>", "prefix xmlns"),
        ("no_markup", "Once upon a time", ""),
        ("no_root", "<!-- nothing -->", ""),
        ("other_root", "<session/>", SILENT),
        ("root_in_capitals", "<ORVO/>", SILENT),
        ("two_roots", "<orvo/><orvo/>", ""),
        ("text_behind_root", "<orvo/>text", ""),
        ("text_before_root", "text<orvo/>", ""),
        ("unclosed_root", "<orvo>", ""),
        ("unclosed_tag", "<orvo", ""),
        ("crossed", "<orvo><a><b></a></b></orvo>", ""),
        ("end_only", "</orvo>", ""),
        ("double_attribute", '<orvo a="" a=""/>', ""),
        ("unquoted_attribute", "<orvo a=b/>", ""),
        ("attribute_without_value", "<orvo a/>", ""),
        ("less_than_in_attribute", '<orvo a="<"/>', ""),
        ("bare_ampersand", "<orvo>&</orvo>", ""),
        ("unknown_entity", "<orvo>&unknown;</orvo>", ""),
        ("reference_to_nul", "<orvo>&#0;</orvo>", ""),
        ("reference_to_surrogate", "<orvo>&#xD800;</orvo>", ""),
        ("reference_beyond_unicode", "<orvo>&#x110000;</orvo>", ""),
        ("reference_that_overflows", "<orvo>&#x1000000000000000041;</orvo>", ""),
        ("section_end_in_text", "<orvo>]]></orvo>", ""),
        ("section_outside_root", "<![CDATA[x]]><orvo/>", ""),
        ("dashes_in_comment", "<orvo><!-- -- --></orvo>", ""),
        ("control_character", "<orvo>\x01</orvo>", ""),
        ("unknown_prefix", "<p:orvo/>", ""),
        ("reserved_prefix", '<orvo xmlns:xml="u"/>', ""),
        ("two_colons", "<orvo><a:b:c/></orvo>", ""),
        ("xml_declaration_late", " <?xml version='1.0'?><orvo/>", ""),
        ("xml_declaration_twice", "<?xml version='1.0'?><?xml version='1.0'?><orvo/>", ""),
        ("version_9", "<?xml version='9.0'?><orvo/>", ""),
        ("instruction_named_xml", "<orvo><?xml a?></orvo>", ""),
        ("schema_location",
         '<orvo xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" '
         'xsi:noNamespaceSchemaLocation="/etc/passwd"/>', None),
        ("style_sheet", '<?xml-stylesheet href="/etc/passwd"?><orvo/>', None),
        ("inclusion",
         '<orvo xmlns:xi="http://www.w3.org/2001/XInclude"><xi:include href="/etc/passwd"/></orvo>',
         None),
    ]


def values():
    number = "9" * 100000
    block = "A" * 3 * MEBIBYTE
    keyframes = numbered('<parameterKeyframe sampleOffset="#" value="1e308" type="x"/>', 20000)
    return [
        ("enormous_numbers",
         in_session(f'<tracks><audioTrack id="1" index="{number}"><audioClip id="{number}"/>'
                    "</audioTrack></tracks>"), None),
        ("track_without_a_number",
         in_session(f'<tracks><audioTrack id="{number}"/></tracks>'), SILENT),
        ("negative_numbers",
         in_clip('<fadeIn startPoint="-9223372036854775808" endPoint="-1" shape="-2147483648"/>'),
         None),
        ("numbers_that_are_none",
         in_clip('<fadeIn startPoint="nan" endPoint="inf" shape="1e999" type=""/>'), None),
        ("exponent_bomb",
         in_rack('<component id="trackGain"><parameter index="0" parameterValue="1e'
                 + number + '"/></component>'), None),
        ("digits_bomb",
         in_rack('<component id="trackGain"><parameter index="0" parameterValue="0.'
                 + "0" * 500000 + '1"/></component>'), None),
        ("largest_parameter_index",
         in_rack('<slot><component><parameter index="4294967295" parameterValue="1"/>'
                 "</component></slot>"), None),
        ("largest_channel",
         in_clip('<channelMap><channel index="4294967295" sourceIndex="4294967295"/></channelMap>'),
         None),
        ("negative_channel",
         in_clip('<channelMap><channel index="-1" sourceIndex="-1"/></channelMap>'), None),
        ("many_channels",
         in_clip("<channelMap>" + numbered('<channel index="#" sourceIndex="#"/>', 50000)
                 + "</channelMap>"), None),
        ("many_keyframes",
         in_rack('<slot><component><parameter index="0"><parameterKeyframes>' + keyframes
                 + "</parameterKeyframes></parameter></component></slot>"), None),
        ("many_tracks",
         in_session("<tracks>" + numbered('<audioTrack id="#" index="#"/>', 20000) + "</tracks>"),
         None),
        ("many_takes", in_clip(numbered('<take fileID="#"/>', 30000)), None),
        ("many_slots", in_rack(numbered('<slot id="#"/>', 20000)), None),
        ("many_clip_groups",
         in_session("<clipGroups>" + numbered('<clipGroup id="#"><item clipID="#"/></clipGroup>',
                                              20000) + "</clipGroups>"), None),
        ("many_properties",
         in_session("<properties>" + "<property>x</property>" * 30000 + "</properties>"), None),
        ("midi_block",
         in_session('<tracks><instrumentTrack id="1"><midiClip id="2"><midiEvents><![CDATA[' + block
                    + "]]></midiEvents></midiClip></instrumentTrack></tracks>"), None),
        ("midi_block_that_is_none",
         in_session('<tracks><instrumentTrack id="1"><midiClip id="2"><midiEvents><![CDATA[====\x7f!!]]>'
                    "</midiEvents></midiClip></instrumentTrack></tracks>"), None),
        ("tempo_block",
         in_session("<metronome><globalTrackInfo><tempoEvents>" + block
                    + "</tempoEvents></globalTrackInfo></metronome>"), None),
        ("preset_block",
         in_rack("<slot><component><presetChunkData>" + block
                 + "</presetChunkData></component></slot>"), None),
        ("file_of_a_device", in_root('<files><file id="1" absolutePath="/dev/zero"/>'
                                     '<file id="2" relativePath="/etc/passwd"/></files>'), None),
        ("file_on_a_server",
         in_root('<files><file id="1" absolutePath="http://127.0.0.1:9/a.wav"/>'
                 '<file id="2" absolutePath="//server/share/a.wav"/></files>'), None),
        ("nested_tracks",
         in_session("<tracks>" + '<audioTrack id="1"><tracks>' * 100 + "</tracks></audioTrack>" * 100
                    + "</tracks>"), None),
        ("text_around_everything",
         in_root('x<session>x<tracks>x<audioTrack id="1">x</audioTrack>x</tracks>x</session>x'), None),
        ("every_element_twice", in_root("<session/>" * 2 + "<files/>" * 2), None),
    ]


def documents():
    every = [("document_type_" + name, text, DOCTYPE) for name, text in document_types()]
    for group, rows in (("size", sizes()), ("encoding", encodings()), ("malformed", malformed()),
                        ("value", values())):
        every += [(f"{group}_{name}", content, refused) for name, content, refused in rows]
    for name, content, refused in every:
        data = content if isinstance(content, bytes) else content.encode("utf-8")
        yield Document(name, data, refused)

#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Puts a stereo region on the only audio track of an Ardour 7 session, at its start, and sets the session's range.

  ardour_region.py SESSION.ardour STEREO.wav

The recording's two channels are written as mono files into the session's folder. Standard library only.
"""
import os
import sys
import wave
import xml.etree.ElementTree as ET

SUPERCLOCK = 282240000  # of Ardour's time line, ticks a second


def split(source, folder):
    """Writes NAME%L.wav and NAME%R.wav; gives their names, frame count and rate."""
    with wave.open(source) as w:
        width, frames, rate = w.getsampwidth(), w.getnframes(), w.getframerate()
        assert w.getnchannels() == 2, "a stereo recording was expected"
        data = w.readframes(frames)
    names = []
    for channel, letter in enumerate("LR"):
        mono = b"".join(data[i:i + width] for i in range(channel * width, len(data), 2 * width))
        names.append("loop%" + letter + ".wav")
        with wave.open(os.path.join(folder, names[-1]), "wb") as w:
            w.setnchannels(1)
            w.setsampwidth(width)
            w.setframerate(rate)
            w.writeframes(mono)
    return names, frames, rate


def main(session, recording):
    place = os.path.dirname(os.path.abspath(session))
    folder = os.path.join(place, "interchange", os.path.basename(place), "audiofiles")
    files, frames, rate = split(recording, folder)
    tree = ET.parse(session)
    root = tree.getroot()
    first = int(root.get("id-counter"))
    root.set("id-counter", str(first + 10))
    ids = [str(first + i) for i in range(1, 7)]
    length = "a%d@a0" % (frames * SUPERCLOCK // rate)
    for channel in range(2):
        ET.SubElement(root.find("Sources"), "Source", {
            "name": files[channel], "type": "audio", "flags": "", "id": ids[channel], "natural-position": "a0",
            "captured-for": "", "channel": "0", "origin": "", "gain": "1", "take-id": ""})
    region = {
        "name": "loop", "id": ids[2], "type": "audio", "start": "a0", "length": length, "sync-position": "a0",
        "ancestral-start": "a0", "ancestral-length": "a0@a0", "muted": "0", "opaque": "1", "locked": "0",
        "video-locked": "0", "automatic": "1", "whole-file": "1", "import": "0", "external": "0", "sync-marked": "0",
        "left-of-split": "0", "right-of-split": "0", "hidden": "0", "position-locked": "0", "valid-transients": "0",
        "stretch": "1", "shift": "1", "layering-index": "0", "tags": "", "contents": "0", "envelope-active": "0",
        "default-fade-in": "1", "default-fade-out": "1", "fade-in-active": "0", "fade-out-active": "0",
        "scale-amplitude": "1", "first-edit": "nothing", "source-0": ids[0], "source-1": ids[1],
        "master-source-0": ids[0], "master-source-1": ids[1], "channels": "2"}
    ET.SubElement(root.find("Regions"), "Region", region)
    track = next(r for r in root.iter("Route") if r.get("audio-playlist"))
    for playlist in root.iter("Playlist"):
        if playlist.get("id") == track.get("audio-playlist"):
            placed = dict(region, name="loop.1", id=ids[3], automatic="0", **{"whole-file": "0"})
            ET.SubElement(ET.SubElement(playlist, "Region", placed), "Envelope", {"default": "yes"})
    locations = root.find("Locations")
    for old in [l for l in locations if "IsSessionRange" in l.get("flags", "")]:
        locations.remove(old)
    ET.SubElement(locations, "Location", {
        "id": ids[4], "name": "session", "start": "a0", "end": length.split("@")[0], "flags": "IsSessionRange",
        "locked": "0", "timestamp": "0", "cue": "0"})
    tree.write(session, encoding="UTF-8", xml_declaration=True)


if __name__ == "__main__":
    main(*sys.argv[1:])

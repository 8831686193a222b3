"""Saved lists of alarm groups."""

import base64
import os
import struct
import uuid


def group(time="7:00", **fields):
    """Returns a group whose run starts at the time; one alarm by default."""
    hour, minute = map(int, time.split(":"))
    return {
        "id": str(uuid.uuid4()).upper(), "label": "", "targetHour": hour, "targetMinute": minute,
        "alarmCount": 1, "intervalMinutes": 1, "startBefore": False, "isEnabled": True, "repeatDays": [],
        "soundName": "morning_glass", "volume": 0.8, "ttsEnabled": False, "ttsMessage": "",
        "ttsLastEnabled": False, "ttsLastMessage": "", "ttsVolume": 1.0, "createdAt": 789000000.25,
    } | fields


def bookmark(path):
    """Returns a bookmark as a group stores it: format and version, device, inode, creation time (0: unknown) and
    path, in Base64."""
    status = os.stat(path)
    data = b"KOVAbmk1" + struct.pack(">QQq", status.st_dev, status.st_ino, 0) + os.fsencode(path)
    return base64.b64encode(data).decode()


def custom(path, **fields):
    """Returns a group with a sound file of the user's."""
    return group(**{"customSoundPath": bookmark(path), "customSoundName": path.name} | fields)

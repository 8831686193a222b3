"""Saved lists of alarm groups."""

import uuid


def group(time="7:00", **fields):
    """One alarm at the time, with the given fields; silent unless they say otherwise."""
    hour, minute = map(int, time.split(":"))
    return {
        "id": str(uuid.uuid4()).upper(), "label": "", "targetHour": hour, "targetMinute": minute,
        "alarmCount": 1, "intervalMinutes": 1, "startBefore": True, "isEnabled": True, "repeatDays": [],
        "soundName": "morning_glass", "volume": 0.8, "ttsEnabled": False, "ttsMessage": "",
        "ttsLastEnabled": False, "ttsLastMessage": "", "ttsVolume": 1.0, "createdAt": 789000000.25,
    } | fields

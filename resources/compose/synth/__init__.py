"""The shared sound workshop: score, voices, winds, drums, effects, master."""

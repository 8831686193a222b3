"""The shared sound workshop: score, voices, drums, effects, master."""

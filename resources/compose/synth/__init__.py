"""The modules that all pieces share: score, voices, winds, drums, effects, master."""

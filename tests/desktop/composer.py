"""An ibus input method that composes letters until Return commits or Escape cancels them, as Japanese ones do.
Prints the composition whenever it changes, and F9 when that key reaches it."""

import gi

gi.require_version("IBus", "1.0")
from gi.repository import GLib, GObject, IBus  # noqa: E402


class Composer(IBus.Engine):
    composed = ""

    def do_process_key_event(self, key, _code, state):
        if key == IBus.KEY_F9:
            print("F9", flush=True)
        if state & IBus.ModifierType.RELEASE_MASK or not (chr(key & 0xFF).isalpha() and key < 0x80 or self.composed):
            return False
        if key == IBus.KEY_Return:
            self.commit_text(IBus.Text.new_from_string(self.composed))
        self.compose("" if key in (IBus.KEY_Return, IBus.KEY_Escape) else self.composed + chr(key))
        return True

    def compose(self, text):
        self.composed = text
        print(text, flush=True)
        if text:
            self.update_preedit_text_with_mode(IBus.Text.new_from_string(text), len(text), True,
                                               IBus.PreeditFocusMode.COMMIT)
        else:
            self.hide_preedit_text()

    def do_reset(self):
        self.compose("")


IBus.init()
bus = IBus.Bus()
factory = IBus.Factory.new(bus.get_connection())
factory.add_engine("composer", GObject.type_from_name(Composer.__gtype__.name))
component = IBus.Component.new("test.Composer", "", "", "", "", "", "", "")
component.add_engine(IBus.EngineDesc.new("composer", "", "", "ja", "", "", "", ""))
bus.register_component(component)


def activated(_, result):
    try:
        bus.set_global_engine_async_finish(result)
        print("ready", flush=True)
    except GLib.Error as error:  # the daemon is still starting
        print(error, flush=True)
        GLib.timeout_add(100, activate)


def activate():
    bus.set_global_engine_async("composer", 10_000, None, activated)


activate()
GLib.MainLoop().run()

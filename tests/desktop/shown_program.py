"""The built program on a desktop of its own, seen by tests as a screen reader sees it.

Only the system's own Python has what this needs.
"""
import contextlib

from built_program import BuiltProgramTest, settings_in

from private_desktop import let_screen_readers_in, make_folder, open_desktop, serve_mail, tell

MAIL = """From: Zoë <zoe@example.org>\r
To: robin@example.com\r
Subject: {subject}\r
Content-Type: text/plain; charset=utf-8\r
\r
Text of {subject}, for every ear.\r
"""


class ShownProgramTest(BuiltProgramTest):
    SUBJECTS = ()  # of the messages of robin, whose password is secret
    MAILS = ()     # more of them, as they stand on the server
    open_desktop = staticmethod(open_desktop)

    @classmethod
    def setUpClass(cls):
        stack = contextlib.ExitStack()
        cls.addClassCleanup(stack.close)
        home = make_folder(stack)
        files = []
        for mail in [MAIL.format(subject=subject).encode() for subject in cls.SUBJECTS] + list(cls.MAILS):
            files.append(home / f"mail{len(files)}")
            files[-1].write_bytes(mail)
        cls.post, cls.ports = serve_mail(stack, "secret", {"robin": files})
        cls.home, cls.settings = home, settings_in(home)
        cls.open_desktop(stack, home)
        let_screen_readers_in()
        import screen_reader  # finds the bus in the environment
        cls.see = screen_reader

    def start(self, *words):
        self.program = super().start(*words)
        self.root = self.see.wait_for("Velmora", lambda: self.see.velmora(self.program.pid))

    def end(self):
        super().end(self.program)

    def has(self, widget, state):
        return self.see.has(widget, getattr(self.see.pyatspi, "STATE_" + state))

    def find(self, roles, name):
        return self.see.wait_for(name, lambda: self.see.showing(self.root, roles, name))[0]

    def button(self, name):
        return self.find(self.see.BUTTONS, name)

    def field(self, name):
        return self.find(self.see.FIELDS, name)

    def wait_for_focus(self, widget):
        self.see.wait_for("the focus at " + widget.name, lambda: self.has(widget, "FOCUSED"))

    def key(self, *keys):
        tell("xdotool", "key", *keys)

    def focused(self):
        """What has the keyboard, of all that can be worked by it."""
        roles = self.see.BUTTONS | self.see.FIELDS | self.see.LISTS | self.see.BOXES | self.see.LABELS
        return next((each for each in self.see.showing(self.root, roles) if self.has(each, "FOCUSED")), None)

    def tab(self, former):
        """Takes the keyboard from one control to the next. Links take a key for themselves, and times stop at both parts.
        """
        twice = former.getRole() in self.see.LABELS or former.name.endswith("of the quiet time")
        self.key(*["Tab"] * (2 if twice else 1))
        return self.see.wait_for("the next one", lambda: (now := self.focused()) != former and now)

    def press(self, name):
        """A button, once it is on."""
        button = self.button(name)
        self.see.wait_for(name + " to be on", lambda: self.has(button, "SENSITIVE"))
        self.see.click(button)

    def answer(self, title, words, keys, default):
        """Answers a question by keys once the keyboard is there, at its default button."""
        box = self.see.wait_for(title, lambda: self.see.window(self.root, title))
        self.assertIn(words, self.see.showing(box, self.see.LABELS)[0].name)
        self.wait_for_focus(self.see.showing(box, self.see.BUTTONS, default)[0])
        self.key(*keys.split())
        self.see.wait_for("the end of the question", lambda: not self.see.window(self.root, title))

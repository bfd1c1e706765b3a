"""Input methods (Imm...): one context for all windows. Nobody composes anything here: characters
that no key has arrive as WM_CHAR.
"""

from handheld.emulator.calls import export

CONTEXT = 0x1D000010


@export("COREDLL", "ImmGetContext", "window")
def get_context(_system, _window):
    return CONTEXT


@export("COREDLL", "ImmReleaseContext", "window context")
def release_context(_system, _window, context):
    return context == CONTEXT


@export("COREDLL", "ImmGetCompositionStringW", "context kind buffer size")
def get_composition_string(_system, _context, _kind, _buffer, _size):
    """Nothing has been composed."""
    return 0


@export("COREDLL", "ImmSetCompositionWindow", "context form")
def set_composition_window(_system, context, _form):
    return context == CONTEXT


@export("COREDLL", "ImmSetCompositionFontW", "context font")
def set_composition_font(_system, context, _font):
    return context == CONTEXT


@export("COREDLL", "ImmNotifyIME", "context action index value")
def notify(_system, context, _action, _index, _value):
    return context == CONTEXT

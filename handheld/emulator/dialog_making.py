"""Making dialogs from templates, and running modal ones until they have their answer."""

from handheld.emulator import frame
from handheld.emulator.calls import export
from handheld.emulator.constants import WM_INITDIALOG, WM_SETFONT, WS_CHILD, WS_VISIBLE
from handheld.emulator.dialogs import BS_DEFPUSHBUTTON, IDOK, first_stop, give_focus
from handheld.emulator.templates import Template, to_pixels, units


def create(system, instance, address, owner, procedure, parameter, visible=None):
    """A dialog from a template in memory, after its WM_INITDIALOG. `visible` overrides the
    template's style."""
    return create_from(system, instance, Template(system.memory, address), owner, procedure,
                       parameter, visible)


def create_from(system, instance, template, owner, procedure, parameter, visible):
    base = units(template.font)
    dialog = make_frame(system, template, base, owner, instance)
    dialog.dialog_procedure = procedure
    dialog.set_control_font(template.font)
    for control in template.controls:
        add_control(system, dialog, control, base, instance)
    initialise(system, dialog, parameter)
    wanted = bool(template.style & WS_VISIBLE) if visible is None else visible
    if wanted and not dialog.destroyed and dialog.answer is None:
        system.windows.show(dialog, True)
        system.windows.update(dialog)
    return dialog


def make_frame(system, template, base, owner, instance):
    """The window without its controls; the template's size is that of the client area."""
    x, y, width, height = to_pixels(template.rect, base)
    style = template.style & ~WS_VISIBLE
    child = bool(style & WS_CHILD)
    dialog = system.windows.create("Dialog", template.title, style, template.ex_style, x, y, width,
                                   height, owner, 0, instance, 0)
    if not child:
        left, top, right, bottom = frame.insets(dialog)
        area = system.screen.work_area
        system.windows.move(dialog, area[0] + max(0, x), area[1] + max(0, y),
                            width + left + right, height + top + bottom)
    return dialog


def add_control(system, dialog, control, base, instance):
    x, y, width, height = to_pixels(control.rect, base)
    title = control.title if isinstance(control.title, str) else ""
    window = system.windows.create(control.class_name, title, control.style | WS_CHILD,
                                   control.ex_style, x, y, width, height, dialog, control.id,
                                   instance, 0)
    if hasattr(window, "set_picture"):
        window.set_picture(control.title)  # a resource's name or number
    system.windows.send(window, WM_SETFONT, dialog.control_font, 0)
    if window.style & 0xF == BS_DEFPUSHBUTTON and window.class_name == "BUTTON":
        dialog.default_id = control.id


def initialise(system, dialog, parameter):
    first = first_stop(dialog)
    handle = first.handle if first is not None else 0
    if dialog.default_id == 0 and any(child.id == IDOK for child in dialog.children):
        dialog.default_id = IDOK
    wants = system.windows.send(dialog, WM_INITDIALOG, handle, parameter)
    if wants and not dialog.destroyed and dialog.answer is None and first is not None:
        give_focus(dialog, first)


@export("COREDLL", "CreateDialogIndirectParamW", "instance template window procedure parameter")
def create_dialog(system, instance, template, owner, procedure, parameter):
    return create(system, instance, template, owner, procedure, parameter)


@export("COREDLL", "DialogBoxIndirectParamW", "instance template window procedure parameter")
def dialog_box(system, instance, template, owner, procedure, parameter):
    if owner is not None:
        system.windows.enable(owner, False)
    dialog = create(system, instance, template, owner, procedure, parameter, visible=True)
    return run_modal(system, dialog)


def run_modal(system, dialog):
    """Runs messages until the dialog has its answer; what that is."""
    owner = dialog.owner
    system.windows.loop(lambda: dialog.answer is not None or dialog.destroyed, dialog=dialog)
    if owner is not None:
        system.windows.enable(owner, True)
    if not dialog.destroyed:
        system.windows.destroy(dialog)
    if owner is not None and not owner.destroyed:
        system.windows.activate(owner)
    return dialog.answer if dialog.answer is not None else -1


@export("COREDLL", "EndDialog", "window answer")
def end_dialog(_system, window, answer):
    if window is None:
        return False
    window.end(answer)
    return True

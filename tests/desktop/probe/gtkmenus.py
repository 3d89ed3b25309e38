#!/usr/bin/python3
"""A program with menus by GTK 3, which tells what is chosen in them: the same as qtmenus.cpp."""

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402


def tell(line):
    print(line, flush=True)


def add(menu, title, told=None, item=None):
    item = item or Gtk.MenuItem.new_with_mnemonic(title)
    if told:
        item.connect("activate", lambda _: tell(told))
    menu.append(item)
    return item


def add_menu(menu, title):
    submenu = Gtk.Menu()
    add(menu, title).set_submenu(submenu)
    return submenu


def ask(window):
    question = Gtk.MessageDialog(transient_for=window, modal=True, text="Well?")
    question.add_button("_OK", Gtk.ResponseType.OK)
    question.connect("map", lambda _: tell("asks"))
    question.run()
    question.destroy()
    tell("answered")


def fill_recent(recent):
    if not recent.get_children():
        add(recent, "letter.txt", "chose letter.txt")
        recent.show_all()


def make_file_menu(bar, window):
    menu = add_menu(bar, "_File")
    add(menu, "_Open\u2026", "chose Open")
    add(menu, "Save _As...", "chose Save As")
    menu.append(Gtk.SeparatorMenuItem())
    add(menu, "_Close", "chose Close").set_sensitive(False)
    recent = add_menu(menu, "_Recent")
    recent.get_attach_widget().connect("activate", lambda _: fill_recent(recent))
    recent.connect("unmap", lambda _: tell("closed Recent"))
    add(menu, "As_k", "chose Ask").connect("activate", lambda _: ask(window))


def make_view_menu(bar):
    menu = add_menu(bar, "_View")
    add(add_menu(add_menu(menu, "_Zoom"), "_More"), "_200 %", "chose 200 %")
    add(menu, "", "chose Full Screen", Gtk.CheckMenuItem.new_with_mnemonic("_Full Screen"))


def main():
    GLib.set_prgname("gtkmenus")
    Gdk.set_program_class("Gtkmenus")
    window = Gtk.Window(title="GTK Menus")
    window.set_default_size(300, 200)
    bar = Gtk.MenuBar()
    box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL)
    box.pack_start(bar, False, False, 0)
    window.add(box)
    make_file_menu(bar, window)
    make_view_menu(bar)
    window.connect("destroy", Gtk.main_quit)
    window.show_all()
    Gtk.main()


if __name__ == "__main__":
    main()

#!/usr/bin/python3
"""A desktop portal for the tests, on the session bus it is started on.

It speaks the real org.freedesktop.portal.Screenshot (PickColor, version 2) and answers on
org.freedesktop.portal.Request objects as a portal does. The test tells it how to answer the next
request through org.varnel.TestPortal.SetNext:

  "color R G B"  a colour          "cancel"   response 1        "fail"     response 2
  "missing"      no colour key     "wrongtype" a colour that is a string
  "nan"          a NaN component   "twice R G B"  two answers   "never"    no answer

and can answer the last request late with TestPortal.Answer(mode). TestPortal.Stats gives the
last parent window handle and how many requests were closed by their callers; TestPortal.Asked
how many times the interface's version was read.
"""
import math

from gi.repository import Gio, GLib

PORTAL_XML = """
<node>
  <interface name="org.freedesktop.portal.Screenshot">
    <method name="PickColor">
      <arg type="s" name="parent_window" direction="in"/>
      <arg type="a{sv}" name="options" direction="in"/>
      <arg type="o" name="handle" direction="out"/>
    </method>
    <property name="version" type="u" access="read"/>
  </interface>
  <interface name="org.varnel.TestPortal">
    <method name="SetNext"><arg type="s" name="mode" direction="in"/></method>
    <method name="Answer"><arg type="s" name="mode" direction="in"/></method>
    <method name="Stats"><arg type="s" name="stats" direction="out"/></method>
    <method name="Asked"><arg type="s" name="count" direction="out"/></method>
  </interface>
</node>"""

REQUEST_XML = """
<node>
  <interface name="org.freedesktop.portal.Request">
    <method name="Close"/>
  </interface>
</node>"""

portal = Gio.DBusNodeInfo.new_for_xml(PORTAL_XML)
request = Gio.DBusNodeInfo.new_for_xml(REQUEST_XML)
state = {"next": "never", "last": None, "parent": "", "closed": 0, "asked": 0}


def respond(connection, path, mode):
    words = mode.split()
    if not words or words[0] == "never":
        return
    kind = words[0]
    if kind in ("color", "twice"):
        colour = GLib.Variant("(ddd)", tuple(float(w) for w in words[1:4]))
        answers = [(0, {"color": colour})] * (2 if kind == "twice" else 1)
    elif kind == "cancel":
        answers = [(1, {})]
    elif kind == "fail":
        answers = [(2, {})]
    elif kind == "missing":
        answers = [(0, {})]
    elif kind == "wrongtype":
        answers = [(0, {"color": GLib.Variant("s", "red")})]
    elif kind == "nan":
        answers = [(0, {"color": GLib.Variant("(ddd)", (math.nan, 0.5, 0.5))})]
    else:
        raise ValueError(mode)
    for code, results in answers:
        connection.emit_signal(None, path, "org.freedesktop.portal.Request", "Response",
                               GLib.Variant("(ua{sv})", (code, results)))


def on_request_call(connection, sender, path, interface, method, parameters, invocation):
    state["closed"] += 1
    invocation.return_value(None)


def on_portal_call(connection, sender, path, interface, method, parameters, invocation):
    if method == "PickColor":
        parent, options = parameters.unpack()
        token = options.get("handle_token", "t")
        handle = "/org/freedesktop/portal/desktop/request/%s/%s" % (
            sender[1:].replace(".", "_"), token)
        connection.register_object(handle, request.interfaces[0], on_request_call, None, None)
        state["parent"] = parent
        state["last"] = handle
        invocation.return_value(GLib.Variant("(o)", (handle,)))
        mode = state["next"]
        GLib.timeout_add(30, lambda: respond(connection, handle, mode) and False)
    elif method == "SetNext":
        state["next"] = parameters.unpack()[0]
        invocation.return_value(None)
    elif method == "Answer":
        if state["last"]:
            respond(connection, state["last"], parameters.unpack()[0])
        invocation.return_value(None)
    elif method == "Asked":
        invocation.return_value(GLib.Variant("(s)", (str(state["asked"]),)))
    elif method == "Stats":
        invocation.return_value(
            GLib.Variant("(s)", ("%s %d" % (state["parent"], state["closed"]),)))


def on_get_property(connection, sender, path, interface, name):
    state["asked"] += 1
    return GLib.Variant("u", 2)


def on_bus(connection, name):
    for interface in portal.interfaces:
        connection.register_object("/org/freedesktop/portal/desktop", interface,
                                   on_portal_call, on_get_property, None)


Gio.bus_own_name(Gio.BusType.SESSION, "org.freedesktop.portal.Desktop",
                 Gio.BusNameOwnerFlags.NONE, on_bus, None, None)
GLib.MainLoop().run()

"""Has programs offer their widgets to somebody who reads them over the accessibility bus."""
import subprocess

from gi.repository import Gio, GLib

MOST = 20000  # ms that an answer may take


def offer_to_read():
    """For the programs that start from now on."""
    session = Gio.bus_get_sync(Gio.BusType.SESSION)
    bus = ("org.a11y.Bus", "/org/a11y/bus")
    # Qt 5 doesn't notice a reader that was there before it. But as it starts it takes the address of
    # the readers' bus from the root window's property AT_SPI_BUS.
    address = session.call_sync(*bus, "org.a11y.Bus", "GetAddress", None, None,
                                Gio.DBusCallFlags.NONE, MOST).unpack()[0]
    subprocess.run(["xprop", "-root", "-format", "AT_SPI_BUS", "8s", "-set", "AT_SPI_BUS", address],
                   check=True)
    # Qt 6 offers nothing before somebody who reads has said so on the session bus.
    session.call_sync(*bus, "org.freedesktop.DBus.Properties", "Set",
                      GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True))),
                      None, Gio.DBusCallFlags.NONE, MOST)

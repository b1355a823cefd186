"""The tests of devices with scroll axes, with the kernel's devices in the place of the server's
own, on the server that drives them by libinput."""

import kernel_desktop
from uinput_devices import SLOWNESS, Mouse

import device_desktop
import quillon_desktop
import recovery

quillon_desktop.PrivateDesktop = kernel_desktop.KernelDesktop
# Also in the part of the touchpad, which those tests move by pixels and turn by notches; what
# fingers do is a test of its own.
device_desktop.Device = Mouse
# On an emulated processor, whoever asks how long it took is slow himself.
recovery.PATIENCE *= SLOWNESS

from smooth_band_test import SmoothBand  # noqa: E402,F401
from smooth_devices_test import DevicesComeAndGo  # noqa: E402,F401
from smooth_elsewhere_test import SmoothElsewhere  # noqa: E402,F401
from smooth_faults_test import ConnectionLost, Ended, Stopped, WatchdogLost  # noqa: E402,F401
from smooth_grabs_test import OtherGrabs  # noqa: E402,F401
from smooth_pointer_test import SmoothMonitors, SmoothPointer  # noqa: E402,F401
from smooth_return_test import FirstScroll  # noqa: E402,F401

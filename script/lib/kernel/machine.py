"""A virtual machine whose kernel has what a container's or a test machine's own may lack: devices
made by programs (uinput). Everything else in it is the host's: its root is at hand, read-only.

    python3 machine.py [--kvm] [--limit SECONDS] [--set NAME=VALUE]... [--give PROGRAM]... COMMAND...

runs a command in it, from the root folder of the tree, and answers its exit status. Programs that
are given are copied first, to /run/exchange/NAME, so that a build meanwhile does not change them.

The kernel is Debian's own; only its files are fetched, below build/kernel/, and kept there."""

import argparse
import contextlib
import fcntl
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
TREE = HERE.parents[2]
CACHE = TREE / "build/kernel"
META_PACKAGE = "linux-image-amd64"
# Loaded at the start, in this order, each after those that it needs.
MODULES = ("virtio_pci", "virtio_console", "9pnet_virtio", "9p", "overlay", "evdev", "uinput")


class Failed(Exception):
    pass


def main() -> int:
    parser = argparse.ArgumentParser(prog="machine.py", allow_abbrev=False)
    parser.add_argument("--kvm", action="store_true", help="use the processor's virtualisation; "
                        "without, it is emulated, which works everywhere")
    parser.add_argument("--limit", type=float, default=600, help="seconds it may take")
    parser.add_argument("--set", action="append", default=[], metavar="NAME=VALUE")
    parser.add_argument("--give", action="append", default=[], metavar="PROGRAM")
    parser.add_argument("command", nargs=argparse.REMAINDER)
    options = parser.parse_args()
    for number in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, lambda number, _: sys.exit(128 + number))
    try:
        CACHE.mkdir(parents=True, exist_ok=True)
        with open(CACHE / "lock", "w") as lock:
            alone(lock)
            image, first = kernel()
            return run(image, first, options)
    except Failed as failure:
        print(f"test-kernel: {failure}", file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        print("test-kernel: stopped", file=sys.stderr)
        return 128 + signal.SIGINT


def alone(lock) -> None:
    """Two machines would write the same files; and one that was killed may have left some."""
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        raise Failed("another one runs in this tree") from None
    for kind in ("exchange", "fetch", "initramfs"):
        for left in CACHE.glob(f"{kind}-*"):
            shutil.rmtree(left, ignore_errors=True)


# The kernel

def kernel() -> tuple[pathlib.Path, pathlib.Path]:
    """The kernel's image and the archive of the files that it starts with."""
    root = CACHE / "linux"
    if not root.exists():
        begin = time.monotonic()
        with tempfile.TemporaryDirectory(dir=CACHE, prefix="fetch-") as folder:
            fetch(pathlib.Path(folder))
            (pathlib.Path(folder) / "root").rename(root)
        print(f"== the kernel's files fetched: {time.monotonic() - begin:.1f} s", flush=True)
    image, = (root / "boot").glob("vmlinuz-*")
    first = CACHE / "initramfs"
    sources = [HERE / "init", pathlib.Path(__file__), image]
    if not first.exists() or first.stat().st_mtime < max(it.stat().st_mtime for it in sources):
        with tempfile.TemporaryDirectory(dir=CACHE, prefix="initramfs-") as folder:
            pack(pathlib.Path(folder), image.name.removeprefix("vmlinuz-"), root, first)
    return image, first


def fetch(folder: pathlib.Path) -> None:
    """Downloads the package without installing it: the host keeps the kernel that it has."""
    try:
        download(folder)
    except Failed:  # what is known of the mirror may be old, or nothing
        as_root = [] if os.getuid() == 0 else ["sudo"]
        do(*as_root, "apt-get", "-q", "-o", "DPkg::Lock::Timeout=300", "update")
        download(folder)
    package, = folder.glob("linux-image-*.deb")
    do("dpkg-deb", "-x", package, folder / "whole")
    # Drivers of real machines are most of it, and of no use here.
    for place in ("drivers/virtio", "drivers/char", "drivers/input", "fs/9p", "fs/fscache",
                  "fs/netfs", "fs/overlayfs", "net/9p"):
        modules, = (folder / "whole/lib/modules").iterdir()
        source = modules / "kernel" / place
        if source.exists():
            shutil.copytree(source, folder / "root/lib/modules" / modules.name / "kernel" / place)
    for name in ("modules.builtin", "modules.order", "modules.builtin.modinfo"):
        shutil.copy(modules / name, folder / "root/lib/modules" / modules.name)
    (folder / "root/boot").mkdir()
    shutil.copy(folder / f"whole/boot/vmlinuz-{modules.name}", folder / "root/boot")
    do("depmod", "-b", folder / "root", modules.name)


def download(folder: pathlib.Path) -> None:
    depends = do("apt-cache", "depends", "--important", META_PACKAGE)
    names = re.findall(r"^  Depends: (linux-image-[0-9]\S+)$", depends, re.MULTILINE)
    if len(names) != 1:
        raise Failed(f"the package lists do not say what {META_PACKAGE} is: {depends.strip()!r}")
    do("apt-get", "-q", "-o", "APT::Sandbox::User=", "download", names[0], cwd=folder)


def pack(folder: pathlib.Path, version: str, root: pathlib.Path, archive: pathlib.Path) -> None:
    for name in ("bin", "dev", "proc", "sys", "root", "lower", "layer", "modules"):
        (folder / name).mkdir()
    shutil.copy("/bin/busybox", folder / "bin")
    shutil.copy(HERE / "init", folder)
    modules = root / "lib/modules" / version
    needs = {}
    for line in (modules / "modules.dep").read_text().splitlines():
        path, _, others = line.partition(":")
        needs[re.sub(r"\.ko(\..*)?$", "", pathlib.Path(path).name)] = [*reversed(others.split()),
                                                                       path]
    order = []
    for name in MODULES:  # one that is not there is part of the kernel itself
        order += [path for path in needs.get(name, []) if path not in order]
    for path in order:
        shutil.copy(modules / path, folder / "modules")
    (folder / "modules/order").write_text("".join(f"{pathlib.Path(path).name}\n" for path in order))
    names = "".join(f"{path.relative_to(folder)}\n" for path in sorted(folder.rglob("*")))
    new = folder.with_suffix(".new")
    with open(new, "wb") as file:
        subprocess.run(["cpio", "--quiet", "-o", "-H", "newc", "-R", "0:0"], cwd=folder, stdout=file,
                       input=names.encode(), check=True)
    new.rename(archive)


def do(*command, **options) -> str:
    """Answers what it prints; Failed with what it says if it fails."""
    try:
        done = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)
    except FileNotFoundError:
        raise Failed(f"no program {command[0]!r}; script/bootstrap kernel installs it") from None
    if done.returncode != 0:
        raise Failed(f"status {done.returncode} of {' '.join(map(str, command))}:\n{done.stdout}")
    return done.stdout


# The machine

def run(image: pathlib.Path, first: pathlib.Path, options) -> int:
    console = CACHE / "console.log"
    with tempfile.TemporaryDirectory(dir=CACHE, prefix="exchange-") as folder:
        exchange = pathlib.Path(folder)
        for program in options.give:
            shutil.copy(program, exchange)
        (exchange / "tree").write_text(f"{TREE}\n")
        (exchange / "environment").write_text("".join(f"{line}\n" for line in options.set))
        (exchange / "command").write_text("".join(f"{line}\n" for line in options.command))
        ended = await_end(machine(image, first, exchange, console, options.kvm), options.limit)
        for log in (exchange / "logs").glob("*") if (exchange / "logs").exists() else ():
            (CACHE / "logs").mkdir(exist_ok=True)
            shutil.copy(log, CACHE / "logs")
        with contextlib.suppress(FileNotFoundError, ValueError):
            return int((exchange / "status").read_text())
    tail = "".join(f"    {line}\n" for line in console.read_text(errors="replace").splitlines()[-20:])
    raise Failed(f"the machine {ended} before the command in it had; its console, {console}, ends "
                 f"with:\n{tail or '    nothing, it is empty'}")


def machine(image, first, exchange, console, kvm: bool) -> list[str]:
    def shared(name, folder, how):
        return ["-fsdev", f"local,id={name},path={folder},security_model=none{how}",
                "-device", f"virtio-9p-pci,fsdev={name},mount_tag={name}"]
    return ["qemu-system-x86_64", "-accel", "kvm" if kvm else "tcg", "-cpu",
            "host" if kvm else "max", "-smp", "2", "-m", "1536", "-nodefaults", "-no-user-config",
            "-no-reboot", "-display", "none", "-kernel", image, "-initrd", first,
            "-append", "console=ttyS0 quiet panic=-1",
            "-chardev", f"file,id=console,path={console}", "-serial", "chardev:console",
            "-device", "virtio-serial-pci", "-chardev", "stdio,id=output,signal=off",
            "-device", "virtserialport,chardev=output,name=output",
            *shared("host", "/", ",readonly=on,multidevs=remap"),
            *shared("exchange", exchange, "")]


def await_end(command, limit: float) -> str:
    """Whatever ends us ends the machine too."""
    process = subprocess.Popen(["setpriv", "--pdeathsig", "KILL", *map(str, command)],
                               # Without an open one, nothing is passed on from the machine either.
                               stdin=subprocess.PIPE, start_new_session=True)
    try:
        process.wait(limit)
        return f"ended, with status {process.returncode},"
    except subprocess.TimeoutExpired:
        return f"was ended after {limit:g} s"
    finally:
        process.kill()
        process.wait()


if __name__ == "__main__":
    sys.exit(main())

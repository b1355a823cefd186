#!/usr/bin/env python3
"""What shells offer for the command line, asked of the shells themselves.

The program is a stand-in that knows a few tools. With --program FILE what is offered is compared with
what a real one understands, and with --build FOLDER what is installed from there is looked at."""

import argparse
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

PLACE = pathlib.Path(__file__).resolve().parent.parent / "packaging/completions"
TOOLS = ["tool.one", "tool.two", "other", "tool.$(touch expanded)", "tool.two words"]
COMMANDS = {"status", "list", "enable", "disable", "install", "uninstall", "show", "quit",
            "defaults", "replay"}
PROGRAM = BUILD = None

# Types $2 into a zsh of its own, and prints what that would complete it with.
ZSH_DRIVER = r'''
zmodload zsh/zpty
zpty inner zsh -f -i
zpty -w inner "fpath=(${(q)1} \$fpath); autoload -U compinit; compinit -D -u; PS1="
zpty -w inner 'bindkey "^I" offer; zle -C offer complete-word show
show() { compadd() { if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then builtin compadd "$@"; return; fi
local -a found; builtin compadd -A found "$@"; (( $#found )) && print -l -- MATCH:$^found; builtin compadd "$@" }
print; _main_complete; print "THE""END"; exit }'
zpty -w inner "stty -echo"
zpty -n -w inner "$2"$'\t'
while zpty -r inner line "*"$'\n'; do
    line=${${line%%$'\n'}%%$'\r'}
    [[ $line == MATCH:* ]] && print -r -- ${line#MATCH:}
    [[ $line == *THEEND* ]] && break
done
zpty -d inner
'''


class Completion(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        stand_in = self.folder / "quillon"
        lines = "".join(f"printf '%s\\n' '{tool}'\n" for tool in TOOLS)
        stand_in.write_text(f'#!/bin/sh\n[ "$*" = "list --ids" ] || exit 2\n{lines}')
        stand_in.chmod(0o755)
        self.environment = os.environ | {"PATH": f"{self.folder}:{os.environ['PATH']}",
                                         "HOME": str(self.folder)}

    def shell(self, *command: str) -> str:
        if shutil.which(command[0]) is None:
            self.skipTest(f"there is no {command[0]} here")
        done = subprocess.run(command, cwd=self.folder, env=self.environment, timeout=20, text=True,
                              capture_output=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return done.stdout


class Bash(Completion):
    def offered(self, *words: str) -> list[str]:
        """After these words, the last of which is being written."""
        script = ('. "$0"; COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)); _quillon quillon; '
                  'printf "%s\\n" "${COMPREPLY[@]}"')
        output = self.shell("bash", "--norc", "-u", "-c", script, str(PLACE / "quillon.bash"),
                            *words)
        return [line for line in output.splitlines() if line]

    def test_commands(self):
        self.assertEqual(set(self.offered("quillon", "")), COMMANDS | {"--help", "--version"})
        self.assertEqual(self.offered("quillon", "un"), ["uninstall"])
        self.assertEqual(self.offered("quillon", "--v"), ["--version"])

    def test_ids_of_tools(self):
        for command in ("enable", "disable", "install", "uninstall"):
            self.assertEqual(self.offered("quillon", command, "tool.t"),
                             ["tool.two", r"tool.two\ words"])
            self.assertEqual(len(self.offered("quillon", command, "")), len(TOOLS))
            self.assertEqual(self.offered("quillon", command, "tool.one", ""), [])

    def test_what_is_in_an_id_is_not_run(self):
        self.assertIn(r"tool.\$\(touch\ expanded\)", self.offered("quillon", "enable", "tool."))
        self.assertFalse((self.folder / "expanded").exists())

    def test_options_and_files(self):
        self.assertEqual(set(self.offered("quillon", "list", "--")), {"--json", "--ids", "--help"})
        self.assertEqual(set(self.offered("quillon", "status", "--")), {"--json", "--help"})
        self.assertEqual(self.offered("quillon", "replay", "qui"), ["quillon"])
        self.assertEqual(self.offered("quillon", "defaults", "w"), ["write"])

    def test_it_is_registered(self):
        self.assertIn("-F _quillon quillon",
                      self.shell("bash", "--norc", "-c", '. "$0"; complete -p quillon',
                                 str(PLACE / "quillon.bash")))


class OtherShells(Completion):
    def test_zsh_understands_its_file(self):
        self.shell("zsh", "-f", "-n", str(PLACE / "_quillon"))

    def test_zsh_finds_its_file(self):
        script = 'fpath=("$0" $fpath); autoload -U compinit; compinit -D -u; print $_comps[quillon]'
        self.assertEqual(self.shell("zsh", "-f", "-c", script, str(PLACE)), "_quillon\n")

    def test_zsh_offers(self):
        driver = self.folder / "driver"
        driver.write_text(ZSH_DRIVER)

        def offered(line):
            output = self.shell("zsh", "-f", str(driver), str(PLACE), line)
            return set(output.split("\n")) - {""}
        self.assertLessEqual(COMMANDS, offered("quillon "))
        self.assertEqual(offered("quillon enable tool.o"), {"tool.one"})
        self.assertEqual(offered("quillon list --"), {"--json", "--ids"})

    def test_fish_understands_its_file(self):
        self.shell("fish", "--no-execute", str(PLACE / "quillon.fish"))

    def test_fish_offers(self):
        def offered(line):
            output = self.shell("fish", "--no-config", "-c",
                                f'source {PLACE / "quillon.fish"}; complete -C "{line}"')
            return {row.split("\t")[0] for row in output.splitlines()}
        self.assertLessEqual(COMMANDS, offered("quillon "))
        self.assertEqual(offered("quillon enable tool.o"), {"tool.one"})
        self.assertEqual(offered("quillon list --"), {"--json", "--ids"})


class Program(unittest.TestCase):
    def test_what_is_offered_is_what_it_understands(self):
        if PROGRAM is None:
            self.skipTest("no program was named")
        help_text = subprocess.run([PROGRAM, "--help"], capture_output=True, text=True, timeout=20,
                                   check=True).stdout
        listed = help_text.partition("Subcommands:\n")[2].splitlines()
        self.assertEqual({line.split()[0] for line in listed if line.startswith("  ")
                          and not line.startswith("   ")}, COMMANDS)


class Installed(unittest.TestCase):
    def test_each_shell_finds_its_file(self):
        if BUILD is None:
            self.skipTest("no build was named")
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        subprocess.run(["cmake", "--install", BUILD, "--prefix", folder, "--component",
                        "completions"], capture_output=True, timeout=60, check=True)
        for source, place in (("quillon.bash", "bash-completion/completions/quillon"),
                              ("_quillon", "zsh/site-functions/_quillon"),
                              ("quillon.fish", "fish/vendor_completions.d/quillon.fish")):
            self.assertEqual((folder / "share" / place).read_text(), (PLACE / source).read_text())


if __name__ == "__main__":
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--program")
    arguments.add_argument("--build")
    given = arguments.parse_args()
    PROGRAM, BUILD = given.program, given.build
    unittest.main(argv=["completions_test.py"])

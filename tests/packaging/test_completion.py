# SPDX-License-Identifier: GPL-3.0-or-later
"""The completions, asked as the shell asks them and held against the programs' usages."""

import pathlib
import re
import subprocess
import tempfile
import unittest

from usage import TOP, WITH_COMMANDS, commands, formats, options, profile_keys, usage

COMPLETIONS = TOP / "packaging" / "completion"
ASK = """
source "$1"
shift
COMP_WORDS=("$@")
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
function=$(complete -p "${COMP_WORDS[0]}" | sed 's/.*-F \\([^ ]*\\).*/\\1/')
"$function" "${COMP_WORDS[0]}" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\\n' "${COMPREPLY[@]}"
"""


def offered(*words, folder=None):
    """What is offered for the last word."""
    result = subprocess.run(["bash", "-c", ASK, "ask", COMPLETIONS / words[0], *words], capture_output=True, text=True,
                            check=True, cwd=folder)
    assert result.stderr == "", result.stderr
    return result.stdout.splitlines()


class Completions(unittest.TestCase):
    def test_the_first_word_is_a_command(self):
        for program in WITH_COMMANDS:
            self.assertEqual(set(offered(program, "")), commands(program) | {"--help", "--version"})
        self.assertEqual(offered("oxc-report", "ex"), ["export"])
        self.assertEqual(offered("oxc", ""), ["-sched"])
        self.assertEqual(offered("oxc", "-sched", ""), ["--log-format"])
        self.assertEqual(offered("oxc", "-sched", "--log-format", ""), ["text", "json"])
        self.assertEqual(offered("oxc", "-sched", "--log-format", "json", ""), [])

    def test_options_are_those_of_the_usage(self):
        export, info = offered("oxc-report", "export", "-"), offered("oxc-report", "info", "-")
        new = offered("oxc-report", "new", "-")
        self.assertEqual(info, ["--fonts", "--problems"])
        whole = usage("oxc-report")
        begin, end = whole.index("oxc-report new"), whole.index("oxc-report --help")
        self.assertEqual(len(export), len(set(export)))
        self.assertEqual(set(export), options(whole[:begin]) - {"--fonts", "--problems"})
        self.assertEqual(len(new), len(set(new)))
        self.assertEqual(set(new), options(whole[begin:end]))
        self.assertEqual(offered("oxc-report", "export", "a.rpt", "--pass"), ["--password", "--password-stdin"])
        self.assertEqual(options(usage("oxc-mail")), {"--help", "--version"})
        self.assertEqual(set(offered("oxc-design", "-")), options(usage("oxc-design")))
        offers = [set(offered("oxc-store", command, "-")) for command in sorted(commands("oxc-store"))]
        self.assertEqual(set().union(*offers), options(usage("oxc-store")) - {"--help", "--version"})
        self.assertEqual(set(offered("oxc-schedule", "add", "-")), options(usage("oxc-schedule")) - {"--help", "--version"})

    def test_formats_are_those_of_the_usage(self):
        self.assertEqual(offered("oxc-report", "export", "a.rpt", "-f", ""), formats())
        self.assertEqual(offered("oxc-report", "export", "a.rpt", "-f", "xls"), ["xls", "xlsx"])

    def test_words_of_a_new_report_are_those_of_the_usage(self):
        for option in ("--layout", "--chart", "--theme", "--page"):
            words = re.search(rf"\[{option} ([a-z0-9|]+)\]", usage("oxc-report").split("oxc-report new")[1]).group(1)
            self.assertEqual(offered("oxc-report", "new", option, ""), words.split("|"))

    def test_files_are_offered_where_a_file_is_wanted(self):
        with tempfile.TemporaryDirectory() as folder:
            pathlib.Path(folder, "sales by region.rpt").touch()
            self.assertEqual(offered("oxc-design", "sa", folder=folder), ["sales by region.rpt"])
            for words in (["info"], ["export"], ["export", "a.rpt", "-o"], ["new", "--data-source"]):
                self.assertEqual(offered("oxc-report", *words, "sa", folder=folder), ["sales by region.rpt"])
            for option in ("-p", "--formula", "--page"):
                self.assertEqual(offered("oxc-report", "export", "a.rpt", option, "sa", folder=folder), [])
            self.assertEqual(offered("oxc-mail", "set", "VCard", "=", "sa", folder=folder), ["sales by region.rpt"])
            self.assertEqual(offered("oxc-mail", "show", "sa", folder=folder), [])
            for words in (["copy", "--from"], ["link"], ["check"], ["backup", "-o"]):
                self.assertEqual(offered("oxc-store", *words, "sa", folder=folder), ["sales by region.rpt"])
            self.assertEqual(offered("oxc-store", "create", "--editor", "sa", folder=folder), [])

    def test_keys_of_the_mail_profile_and_their_words(self):
        keys = offered("oxc-mail", "set", "")
        self.assertEqual(len(keys), len(set(keys)))
        self.assertEqual(set(keys), {key + "=" for key in profile_keys()})
        self.assertEqual(offered("oxc-mail", "set", "Transport", "="), ["outbox", "smtp", "sendmail"])
        self.assertEqual(offered("oxc-mail", "set", "Transport", "=", "s"), ["smtp", "sendmail"])
        self.assertEqual(offered("oxc-mail", "set", "Transport", "=", "smtp", "Sec"), ["Security="])
        self.assertEqual(offered("oxc-mail", "set", "Security", "=", ""), ["starttls", "tls", "none"])
        self.assertEqual(offered("oxc-mail", "set", "Port", "=", "5"), [])


if __name__ == "__main__":
    unittest.main()

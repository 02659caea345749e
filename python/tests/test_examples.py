"""The Python example program and the README's Python example run and say what they should."""

import os
import re
import subprocess
import sys

from conftest import DEMO, SOURCE_DIR

CODEBOOK = SOURCE_DIR / "examples" / "python" / "codebook.py"


def run(arguments, **options):
    return subprocess.run([sys.executable, *map(str, arguments)], capture_output=True, text=True, check=False,
                          env=os.environ, **options)


def test_codebook_of_the_demo_file():
    done = run([CODEBOOK, DEMO])
    assert done.returncode == 0, done.stderr
    out = done.stdout
    assert out.startswith(f"{DEMO}: 9 variables, 4 cases\nweighted by wt\n")
    assert "\nage  Age in years\n    numeric, scale, format F3.0\n            -9  refused\n    missing: -9\n" in out
    assert ("\nsex  Sex of respondent\n    string, nominal, format A1.0\n"
            "             f  female\n             m  male\n") in out
    assert "    missing: 99999 thru highest\n" in out
    assert "\nregion  Region of residence\n" in out and "    missing: unknown\n" in out


def test_codebook_refuses_bad_input(tmp_path):
    assert run([CODEBOOK]).returncode == 2
    missing = run([CODEBOOK, tmp_path / "missing.sav"])
    assert missing.returncode == 2 and "No such file" in missing.stderr
    broken = tmp_path / "broken.sav"
    broken.write_bytes(b"$FL2")
    done = run([CODEBOOK, broken])
    assert done.returncode == 2 and "near offset" in done.stderr


def test_the_readme_python_example_runs():
    readme = (SOURCE_DIR / "README.md").read_text()
    section = readme[readme.index("## Python"):]
    code = re.search(r"```python\n(.*?)```", section, re.S).group(1)
    done = run(["-c", code], cwd=SOURCE_DIR)
    assert done.returncode == 0, done.stderr
    assert "age: Age in years" in done.stdout
    assert "Sex of respondent" in done.stdout

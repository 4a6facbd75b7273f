"""Runs LibreOffice without a display, with the extension."""

import os
import shutil
import subprocess
import tempfile
import zipfile
from pathlib import Path

CSV = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,false,false"


class Calc:
    """LibreOffice with a new profile and the extension."""

    def __init__(self, extension):
        self.folder = Path(tempfile.mkdtemp(prefix="metrify-calc-"))
        # unopkg refuses to work for root, so the extension is unpacked as a part of the system.
        with zipfile.ZipFile(extension) as archive:
            archive.extractall(self.folder / "bundled" / "metrify.oxt")

    def close(self):
        shutil.rmtree(self.folder)

    def convert(self, source, target_type):
        """Loads a file, calculates it and stores it as another type. Gives the new file."""
        suffix = target_type.split(":")[0]
        folder = Path(tempfile.mkdtemp(dir=self.folder))
        # A failed conversion exits with 0 too, and without a writable profile the program does not end.
        run = subprocess.run(
            ["timeout", "-k", "5", "120", "soffice", "--headless", "--norestore",
             f"-env:UserInstallation={(self.folder / 'profile').as_uri()}",
             f"-env:BUNDLED_EXTENSIONS={(self.folder / 'bundled').as_uri()}",
             "--convert-to", target_type, "--outdir", str(folder), str(source)],
            env=dict(os.environ, HOME=str(self.folder)), capture_output=True, text=True, check=False)
        target = folder / (Path(source).stem + "." + suffix)
        if not target.exists():
            raise AssertionError(f"not converted: {run.stdout}{run.stderr}")
        return target

"""Runs LibreOffice without a display, with the extension."""

import os
import shutil
import signal
import subprocess
import tempfile
import time
import zipfile
from pathlib import Path

import uno
from com.sun.star.connection import NoConnectException

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

    def environment(self):
        return dict(os.environ, HOME=str(self.folder))

    def command(self, *arguments):
        return ["soffice", "--headless", "--norestore",
                f"-env:UserInstallation={(self.folder / 'profile').as_uri()}",
                f"-env:BUNDLED_EXTENSIONS={(self.folder / 'bundled').as_uri()}", *arguments]

    def convert(self, source, target_type):
        """Loads a file, calculates it and stores it as another type. Gives the new file."""
        folder = Path(tempfile.mkdtemp(dir=self.folder))
        # A failed conversion exits with 0 too, and without a writable profile the program does not end.
        run = subprocess.run(
            ["timeout", "-k", "5", "240",
             *self.command("--convert-to", target_type, "--outdir", str(folder), str(source))],
            env=self.environment(), capture_output=True, text=True, check=False)
        target = folder / (Path(source).stem + "." + target_type.split(":")[0])
        if not target.exists():
            raise AssertionError(f"not converted: {run.stdout}{run.stderr}")
        return target


class Office:
    """A running office, which is controlled through its interface."""

    def __init__(self, calc, programs=None):
        """The first programs that it finds by name are those of the folder."""
        self.calc = calc
        pipe = f"metrify-{os.getpid()}"
        environment = calc.environment()
        if programs:
            environment["PATH"] = f"{programs}:{environment['PATH']}"
        self.launcher = subprocess.Popen(calc.command(f"--accept=pipe,name={pipe};urp;"), env=environment,
                                         stderr=subprocess.DEVNULL, start_new_session=True)
        self.context = self.connect(pipe)

    def connect(self, pipe):
        local = uno.getComponentContext()
        resolver = local.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", local)
        for _ in range(720):
            try:
                return resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
            except NoConnectException:
                time.sleep(0.25)
        # The launcher has started another process.
        os.killpg(self.launcher.pid, signal.SIGKILL)
        raise AssertionError("the office does not answer")

    def new(self, service):
        return self.context.ServiceManager.createInstanceWithContext(service, self.context)

    def close(self):
        self.new("com.sun.star.frame.Desktop").terminate()
        self.launcher.wait(240)

"""Too little memory: a message and an exit status, and nothing is left in the folder."""

import random
import resource
import subprocess
import unittest

from orvikdtm import DONE, FAILED, PROGRAM, HostTest

MEGABYTE = 1 << 20


class Memory(HostTest):
    def run_with(self, megabytes, *arguments):
        def limit():
            resource.setrlimit(resource.RLIMIT_AS, (megabytes * MEGABYTE, megabytes * MEGABYTE))

        return subprocess.run([PROGRAM, *arguments], cwd=self.folder, text=True, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=60, check=False, preexec_fn=limit)

    def names(self):
        return sorted(path.name for path in self.folder.iterdir())

    def test_whatever_there_is(self):
        numbers = random.Random(1)
        self.write("site.csv", "".join(
            f"P{i},,{numbers.uniform(0, 900):.3f},{numbers.uniform(0, 900):.3f},{numbers.uniform(0, 50):.3f}\n"
            for i in range(20000)))
        self.write("site.ttin", "as it was")
        failures = 0
        for megabytes in range(16, 50, 2):
            run = self.run_with(megabytes, "convert", "site.csv", "site.ttin")
            self.assertIn(run.returncode, (DONE, FAILED), f"{megabytes} MB: {run.stderr}")
            self.assertEqual(self.names(), ["site.csv", "site.ttin"])
            if run.returncode == DONE:
                break
            failures += 1
            self.assertIn("not enough memory", run.stderr)
            self.assertEqual((self.folder / "site.ttin").read_text(), "as it was")
        self.assertGreater(failures, 3)


if __name__ == "__main__":
    unittest.main()

#!/usr/bin/env python3
"""saving_calls_test.py LIBRARY PLUGIN PROGRAM: the program intercepts every function by which the library may touch
files, so that a new one cannot escape the proofs unnoticed; and the plug-in itself only reads.
"""

import re
import subprocess
import sys

# The C library's functions for files, by the roots of their names.
TOUCHES_FILES = re.compile(
    r"_*[flpd]{0,2}(open|creat|read|write|pread|pwrite|seek|trunc|sync|rename|link|unlink|remove|mkdir"
    r"|mknod|mkfifo|rmdir|mkstemp|mkostemp|mkdtemp|tmpfile|stat|access|chmod|chown|utime|futimens|flock|lockf|fcntl"
    r"|fallocate|copy_file_range|sendfile|splice|getxattr|setxattr|listxattr|removexattr|pathconf|close|dup|ioctl|mmap"
    r"|acl|statfs|statvfs)\w*|euidaccess|realpath|canonicalize_file_name|scandir|nftw|syscall|fput\w+|fget\w+|fprintf")

READS = {"open", "read", "pread", "stat", "fstat", "close"}


def symbols(path, option):
    output = subprocess.run(["nm", "-D", option, path], capture_output=True, text=True, check=True).stdout
    return {line.split()[-1].split("@")[0] for line in output.splitlines()}


def file_calls(path):
    return {name for name in symbols(path, "--undefined-only") if TOUCHES_FILES.fullmatch(name)}


def main():
    library, plugin, program = sys.argv[1:]
    used = file_calls(library)
    taken_over = symbols(program, "--defined-only")
    missing = sorted(used - taken_over)
    print(f"{len(used)} functions that touch files, {len(missing)} of them not intercepted: {' '.join(missing)}")
    others = sorted(file_calls(plugin) - READS)
    print(f"functions of the plug-in itself that may do more than read: {' '.join(others) or 'none'}")
    return 1 if missing or others or len(used) < 20 else 0


if __name__ == "__main__":
    sys.exit(main())

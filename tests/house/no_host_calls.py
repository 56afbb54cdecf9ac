#!/usr/bin/env python3
"""The program below the desktop calls nothing of its host: checks the undefined symbols of its object files against a ban list.

usage: no_host_calls.py OBJECT-FILE...
"""
import re
import subprocess
import sys

# Reason -> names of C functions, and patterns of C++ names, that must not be called.
BANNED = {
    "the time comes from the platform's clock":
        r"time|gettimeofday|clock|clock_gettime|localtime(_r)?|gmtime(_r)?|mktime|timegm|strftime|nanosleep|usleep|sleep"
        r"|std::chrono::.*::now\(\)|std::this_thread::.*",
    "numbers and letters never depend on a locale":
        r"setlocale|localeconv|newlocale|uselocale|nl_langinfo|strcoll|strxfrm|is(w)?(alnum|alpha|digit|lower|print|punct|space|upper|xdigit)"
        r"|to(w)?(lower|upper)|__ctype_.*|mbs?r?to.*|wcs?r?tomb.*|std::locale::.*|std::ctype<.*|std::(__cxx11::)?(numpunct|collate)<.*",
    "streams carry a locale":
        r"std::(__cxx11::)?basic_(i|o|io)?(string)?stream<.*|std::(__cxx11::)?basic_(stringbuf|streambuf|filebuf|ios|[io]?fstream)<.*"
        r"|std::ios_base.*|std::c(out|err|in|log)|std::basic_ostream<.*|std::operator<< <.*",
    "the C library reads numbers by the locale": r"strto.*|ato(f|i|l|ll)|v?s?f?scanf|__isoc(99|23)_.*",
    "the C library writes numbers by the locale": r"v?(f|s|sn|as|d)?printf(_chk)?|__v?(f|s|sn|as|d)?printf_chk|std::to_chars_hex",
    "files belong to the platform":
        r"f?open(64)?|creat|fdopen|freopen|fread|fwrite|fputs|fgets|fputc|fgetc|puts|putchar|putc|read|write|close|fclose|l?stat(64)?"
        r"|unlink|remove|rename|mkdir|rmdir|opendir|access|tmpfile|mkstemp|getcwd|chdir|std::filesystem::.*",
    "the core reads no environment": r"getenv|secure_getenv|setenv|putenv|unsetenv|environ",
    "random numbers come from the platform": r"rand(_r)?|srand|random|srandom|[dlme]rand48|arc4random.*|getrandom|std::random_device::.*",
    "processes belong to the platform":
        r"system|popen|fork|exec[lv]p?e?|posix_spawnp?|kill|raise|signal|sigaction|exit|_exit|_Exit|quick_exit|atexit|abort",
    "there is one thread": r"pthread_create|std::thread::.*|std::condition_variable::.*|std::future.*",
    "the network belongs to the platform": r"socket|connect|bind|listen|accept|send|recv|getaddrinfo|gethostbyname|poll|select",
}

# (object file's end, symbol) -> the reason why it is allowed.
EXCEPTIONS = {}

PATTERNS = {reason: re.compile(rf"(?:{names})$") for reason, names in BANNED.items()}


def undefined_symbols(object_file):
    """The demangled names that the file needs from elsewhere, without the version after an @."""
    listing = subprocess.run(["nm", "-C", "--undefined-only", object_file], check=True, capture_output=True, text=True).stdout
    return [line.split(maxsplit=1)[1].split("@")[0].strip() for line in listing.splitlines() if line.strip()]


def ban_of(symbol):
    return next((reason for reason, pattern in PATTERNS.items() if pattern.match(symbol)), None)


def faults(object_files, exceptions):
    if not object_files:
        yield "no object files given"
    unneeded = set(exceptions)
    for object_file in object_files:
        for symbol in undefined_symbols(object_file):
            reason = ban_of(symbol)
            if not reason:
                continue
            granted = {(end, name) for end, name in exceptions if object_file.endswith(end) and name == symbol}
            unneeded -= granted
            if not granted:
                yield f"{object_file}: calls {symbol}, but {reason}"
    for end, name in sorted(unneeded):
        yield f"{end}: the exception for {name} is no longer needed"


if __name__ == "__main__":
    found = list(faults(sys.argv[1:], EXCEPTIONS))
    print("\n".join(found))
    sys.exit(1 if found else 0)

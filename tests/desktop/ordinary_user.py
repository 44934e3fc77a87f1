"""For tests of what refuses to work for root."""
import os
import sys


def become_ordinary():
    """Starts the script anew where root runs it, as a user who can do no more than any other but read what was built,
    wherever that is. To be called before anything else."""
    if os.geteuid() == 0:
        os.execvp("setpriv", ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups",
                              "--inh-caps=+dac_read_search", "--ambient-caps=+dac_read_search",
                              sys.executable, "-B", *sys.argv])

import gc
import os

import pytest
import zel


def pytest_configure(config):
    # What nobody catches is no warning: a test that expects it says so, with unraised().
    config.addinivalue_line("filterwarnings", "error::pytest.PytestUnraisableExceptionWarning")


def pytest_collection_finish(session):
    # What is there before the first test is no garbage later: the collector need not look at it
    # before and after each test.
    gc.collect()
    gc.freeze()


def counts():
    gc.collect()
    return zel._debug.live(), zel._debug.sliced()


@pytest.fixture(autouse=True)
def nothing_is_left():
    """Each test leaves as many objects as it found, and nothing cut in two."""
    before = counts()
    threshold = gc.get_threshold()
    if os.environ.get("ZEL_GC_EVERY"):
        gc.set_threshold(1)
    yield
    gc.set_threshold(*threshold)
    assert counts() == before

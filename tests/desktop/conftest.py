import os

import pytest

from session import Session


@pytest.fixture
def session():
    session = Session()
    yield session
    session.close()


def pytest_configure(config):
    config.addinivalue_line("markers", "slow: takes most of a minute, so it starts first")
    config.addinivalue_line("markers", "thorough: takes minutes, so it is skipped unless KOVA_THOROUGH=1")


def pytest_runtest_setup(item):
    if item.get_closest_marker("thorough") and os.environ.get("KOVA_THOROUGH") != "1":
        pytest.skip("KOVA_THOROUGH=1 runs it")


def pytest_collection_modifyitems(config, items):
    """Keeps the tests whose name contains one of those in KOVA_TEST_NAMES, slow ones first."""
    names = [name for name in os.environ.get("KOVA_TEST_NAMES", "").split("|") if name]
    kept = [item for item in items if not names or any(name in item.nodeid for name in names)]
    config.hook.pytest_deselected(items=[item for item in items if item not in kept])
    items[:] = sorted(kept, key=lambda item: item.get_closest_marker("slow") is None)

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


def pytest_collection_modifyitems(items):
    items.sort(key=lambda item: item.get_closest_marker("slow") is None)

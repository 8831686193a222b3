import pytest

from session import Session


@pytest.fixture
def session():
    session = Session()
    yield session
    session.close()


def pytest_configure(config):
    config.addinivalue_line("markers", "slow: takes most of a minute, so it starts first")


def pytest_collection_modifyitems(items):
    items.sort(key=lambda item: item.get_closest_marker("slow") is None)

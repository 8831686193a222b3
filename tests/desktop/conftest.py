import pytest

from session import Session


@pytest.fixture
def session():
    session = Session()
    yield session
    session.close()

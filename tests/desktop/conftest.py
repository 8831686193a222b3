from contextlib import closing

import pytest

from session import Session


@pytest.fixture
def session():
    with closing(Session()) as session:
        yield session

# filled with the tests

package com.korvane.ledger;
public interface Postable {
    long [!MAX_AMOUNT:long] = 100000000;
    void post();
}

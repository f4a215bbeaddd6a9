package com.korvane.ledger;
public class LegacyBridge extends LegacyAdapter {
    public void bridge() {
        [>adapt]();  //@ calls LegacyAdapter.adapt
    }
}

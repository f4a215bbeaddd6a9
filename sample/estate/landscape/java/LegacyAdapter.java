package com.korvane.ledger;
public class LegacyAdapter extends LegacyBridge {
    public void adapt() {
        [>bridge]();  //@ calls LegacyBridge.bridge
    }
}

package com.korvane.ledger;
public class FxPosting extends CurrencyAmount {
    private double [!rate:double];
    public long convert(long [!cents:long]) {
        long [!converted:long] = Math.round([cents] * [rate]);
        return [converted];
    }
}

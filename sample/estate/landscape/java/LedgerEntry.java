package com.korvane.ledger;
public abstract class LedgerEntry implements Postable {
    protected long [!amountCents:long];
    protected long [!feeCents:long];
    protected String [!currency:String] = "EUR";
    protected int [!valueDate:int];
    public void validate() {
        if ([amountCents] > [Postable.MAX_AMOUNT]) {
            throw new IllegalStateException("amount exceeds limit");
        }
    }
    public void post() {
        [>validate]();  //@ calls LedgerEntry.validate
    }
}

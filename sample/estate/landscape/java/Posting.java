package com.korvane.ledger;
public class Posting extends LedgerEntry {
    protected String [!accountNo:String];
    protected long [!netCents:long];
    @Override public void post() {
        [>validate]();  //@ calls LedgerEntry.validate
        [netCents] = [amountCents] - [feeCents];
        long [!total:long] = [netCents] + [feeCents];
        [>book]([&accountNo], [&total]);  //@ calls Posting.book
    }
    protected void book(String [!account:String], long [!cents:long]) {
        Account [!target:Account] = Account.[>find]([&account]);  //@ calls Account.find
        [target].[>credit]([&cents]);  //@ calls Account.credit
    }
    public void reverse() {
        [amountCents] = - [amountCents];
        [feeCents] = 0;
    }
}

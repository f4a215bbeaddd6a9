package com.korvane.ledger;
public class SavingsAccount extends Account {
    private double [!bonusRate:double];
    public void addInterest() {
        long [!interest:long] = Math.round([balanceCents] * ([interestRate] + [bonusRate]));
        [>credit]([&interest]);  //@ calls Account.credit
    }
}
